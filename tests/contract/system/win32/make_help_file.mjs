#!/usr/bin/env node
// make_help_file.mjs OUTPUT TITLE PAGE...
// Writes a help file (.chm) with the pages as they are, uncompressed; it opens with the first one. All pages
// are in one directory chunk, so there may be only a few.
import { readFileSync, writeFileSync } from 'node:fs';
import { basename } from 'node:path';

const CHUNK_SIZE = 0x1000;
const HEADER_SIZE = 0x60;
const LANGUAGE = 0x409;
const NONE = 0xffffffff;

const [output, title, ...pages] = process.argv.slice(2);
if (pages.length === 0) {
  console.error('usage: make_help_file.mjs OUTPUT TITLE PAGE...');
  process.exit(2);
}

const text = (value) => Buffer.from(value, 'latin1');
const uint16 = (value) => Buffer.from(new Uint16Array([value]).buffer);
const uint32 = (...values) => Buffer.from(new Uint32Array(values).buffer);
const uint64 = (...values) => Buffer.from(new BigUint64Array(values.map(BigInt)).buffer);
const guid = (hex) => Buffer.from(hex, 'hex');

/** A number in groups of seven bits, the highest first. */
function encoded(value) {
  const groups = [value & 0x7f];
  for (let rest = value >>> 7; rest > 0; rest >>>= 7) groups.unshift((rest & 0x7f) | 0x80);
  return Buffer.from(groups);
}

function systemEntry(code, value) {
  const bytes = text(`${value}\0`);
  return Buffer.concat([uint16(code), uint16(bytes.length), bytes]);
}

const system = Buffer.concat([
  uint32(3),
  systemEntry(2, basename(pages[0])), // the page to open with
  systemEntry(3, title),
]);
const files = [
  { name: '/', bytes: Buffer.alloc(0) },
  { name: '/#SYSTEM', bytes: system },
  ...pages.map((page) => ({ name: `/${basename(page)}`, bytes: readFileSync(page) })),
].sort((a, b) => (a.name.toLowerCase() < b.name.toLowerCase() ? -1 : 1));

let offset = 0;
const entries = Buffer.concat(
  files.map(({ name, bytes }) => {
    const at = bytes.length === 0 ? 0 : offset;
    offset += bytes.length;
    const place = [0, at, bytes.length].map(encoded); // section 0 is the uncompressed one
    return Buffer.concat([encoded(name.length), text(name), ...place]);
  }),
);

const chunkHeaderSize = 0x14;
const free = CHUNK_SIZE - chunkHeaderSize - entries.length;
if (free < 2) throw new Error('too many pages for one directory chunk');
const chunk = Buffer.concat([
  text('PMGL'), uint32(free, 0, NONE, NONE), entries, Buffer.alloc(free - 2), uint16(files.length),
]);
const directory = Buffer.concat([
  text('ITSP'), uint32(1, 0x54, 0x0a, CHUNK_SIZE, 2, 1, NONE, 0, 0, NONE, 1, LANGUAGE),
  guid('6a92025d2e21d0119df900a0c922e6ec'), uint32(0x54, NONE, NONE, NONE), chunk,
]);

const content = Buffer.concat(files.map(({ bytes }) => bytes));
const sizeAt = HEADER_SIZE;
const directoryAt = sizeAt + 0x18;
const contentAt = directoryAt + directory.length;
writeFileSync(output, Buffer.concat([
  text('ITSF'), uint32(3, HEADER_SIZE, 1, 0, LANGUAGE),
  guid('10fd017caa7bd0119e0c00a0c922e6ec'), guid('11fd017caa7bd0119e0c00a0c922e6ec'),
  uint64(sizeAt, 0x18, directoryAt, directory.length, contentAt),
  uint32(0x1fe, 0), uint64(contentAt + content.length), uint32(0, 0),
  directory, content,
]));
