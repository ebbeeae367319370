// Turns a picture into a Windows cursor file.
// usage: make_cursor.mjs RGBA_FILE SIZE HOTSPOT_X HOTSPOT_Y CURSOR_FILE
// RGBA_FILE contains SIZE x SIZE pixels of 4 bytes, top row first.
import { readFileSync, writeFileSync } from 'node:fs';

const [rgbaFile, sizeText, hotspotX, hotspotY, cursorFile] = process.argv.slice(2);
const size = Number(sizeText);
const rgba = readFileSync(rgbaFile);
if (rgba.length !== size * size * 4) {
  throw new Error(`${rgbaFile} holds ${rgba.length} bytes, not ${size} x ${size} pixels`);
}

// Rows of both images run from the bottom up; mask rows are padded to 32 bits.
const maskStride = Math.ceil(size / 32) * 4;
const colours = Buffer.alloc(size * size * 4);
const mask = Buffer.alloc(maskStride * size);
for (let y = 0; y < size; y++) {
  for (let x = 0; x < size; x++) {
    const from = (y * size + x) * 4;
    const row = size - 1 - y;
    const [red, green, blue, alpha] = rgba.subarray(from, from + 4);
    colours.set([blue, green, red, alpha], (row * size + x) * 4);
    if (alpha < 128) mask[row * maskStride + (x >> 3)] |= 0x80 >> (x & 7);
  }
}

const bitmapHeader = Buffer.alloc(40);
bitmapHeader.writeUInt32LE(40, 0);
bitmapHeader.writeInt32LE(size, 4);
bitmapHeader.writeInt32LE(size * 2, 8); // the colours and the mask
bitmapHeader.writeUInt16LE(1, 12);
bitmapHeader.writeUInt16LE(32, 14);
const image = Buffer.concat([bitmapHeader, colours, mask]);

const directory = Buffer.alloc(22);
directory.writeUInt16LE(2, 2); // a cursor
directory.writeUInt16LE(1, 4);
directory.writeUInt8(size, 6);
directory.writeUInt8(size, 7);
directory.writeUInt16LE(Number(hotspotX), 10);
directory.writeUInt16LE(Number(hotspotY), 12);
directory.writeUInt32LE(image.length, 14);
directory.writeUInt32LE(directory.length, 18);
writeFileSync(cursorFile, Buffer.concat([directory, image]));
