// Packages that no honest source would serve, and a function that creates archives for them.
import { deflateRawSync } from 'node:zlib';

const kUtf8Flag = 0x0800;
const kVersion = 20;
const kDeflated = 8;
const kBzip2 = 12;
const kSizeIsElsewhere = 0xffffffff;

const kSums = Uint32Array.from({ length: 256 }, (_, byte) => {
  for (let bit = 0; bit < 8; bit++) byte = byte & 1 ? (byte >>> 1) ^ 0xedb88320 : byte >>> 1;
  return byte;
});
const sumOf = (bytes) => ~bytes.reduce((sum, byte) => (sum >>> 8) ^ kSums[(sum ^ byte) & 0xff], ~0) >>> 0;

/** Little-endian numbers for a zip header: [bytes, number] each. */
function fields(...numbers) {
  const bytes = Buffer.alloc(numbers.reduce((sum, [size]) => sum + size, 0));
  let at = 0;
  for (const [size, number] of numbers) at = bytes.writeUIntLE(number, at, size);
  return bytes;
}

/**
 * The bytes of an archive of {name, bytes, deflated, sum, size, method, zip64}. `sum`, `size` and
 * `method` are what the archive claims instead of the truth; with `zip64` the sizes are in the
 * entry's zip64 field.
 */
export function zipOf(files) {
  const parts = [];
  const directory = [];
  let place = 0;
  for (const { name, bytes = '', deflated = false, sum, size, method, zip64 = false } of files) {
    const content = Buffer.from(bytes);
    const data = deflated ? deflateRawSync(content) : content;
    const nameBytes = Buffer.from(name);
    const sizes = [data.length, size ?? content.length];
    const extra = zip64 ? fields([2, 1], [2, 16], [4, sizes[1]], [4, 0], [4, sizes[0]], [4, 0]) : Buffer.alloc(0);
    const shared = fields(
      [2, kVersion], [2, kUtf8Flag], [2, method ?? (deflated ? kDeflated : 0)], [4, 0x5b756e2a],
      [4, sum ?? sumOf(content)], ...sizes.map((number) => [4, zip64 ? kSizeIsElsewhere : number]),
      [2, nameBytes.length], [2, extra.length],
    );
    const local = Buffer.concat([Buffer.from('PK\x03\x04'), shared, nameBytes, extra, data]);
    const rest = fields([2, 0], [2, 0], [2, 0], [4, 0], [4, place]);
    directory.push(Buffer.from('PK\x01\x02'), fields([2, kVersion]), shared, rest, nameBytes, extra);
    parts.push(local);
    place += local.length;
  }
  const list = Buffer.concat(directory);
  const end = fields([2, 0], [2, 0], [2, files.length], [2, files.length], [4, list.length], [4, place], [2, 0]);
  return Buffer.concat([...parts, list, Buffer.from('PK\x05\x06'), end]);
}

const kFirst = { name: 'first.txt', bytes: 'written before anybody looked further' };
const kEvil = 'evil';
const kLongName = `${'f'.repeat(120)}/${'g'.repeat(120)}/${'n'.repeat(18)}`;

const badName = (name, shown = name.replaceAll('/', '\\')) => ({
  bytes: zipOf([kFirst, { name, bytes: kEvil }, { name: 'last.txt', bytes: '3' }]),
  entry: [75, `Path/File access error: ${shown}`],
});
const kWhole = zipOf([kFirst, { name: 'bin/a.txt', bytes: 'a'.repeat(5000), deflated: true }]);

/** By id: the bytes of a package, and the number and description of its refusal. */
export const hostilePackages = {
  parent: badName('../evil.txt'),
  backslashes: badName('..\\..\\evil.txt'),
  drive: badName('C:/evil.txt'),
  rooted: badName('/evil.txt'),
  unc: badName('//127.0.0.1/share/evil.txt'),
  stream: badName('first.txt:evil'),
  reserved: badName('bin/nul.txt'),
  control: badName('evil\r\n.txt', 'evil??.txt'),
  fullstop: badName('evil.txt.'),
  blank: badName('bin /evil.txt'),
  long: { bytes: zipOf([kFirst, { name: kLongName, bytes: kEvil }]),
          entry: [5, `Invalid procedure call or argument: ${kLongName}`] },
  huge: { bytes: zipOf([kFirst, { name: 'huge.bin', bytes: 'x', size: 0x80000000 }]),
          entry: [7, 'Out of memory: huge.bin'] },
  bzip2: { bytes: zipOf([kFirst, { name: 'bin/a.txt', bytes: 'x', method: kBzip2 }]),
           entry: [5, 'Invalid procedure call or argument: bin\\a.txt is compressed by method 12, ' +
                      'and only stored (0) and deflated (8) entries can be expanded'] },
  nozip: { bytes: Buffer.from('<!DOCTYPE html><p>Please log in.'), entry: [0, 'Source file is currept'] },
  cutshort: { bytes: kWhole.subarray(0, kWhole.length / 2), entry: [0, 'Source file is currept'] },
};
