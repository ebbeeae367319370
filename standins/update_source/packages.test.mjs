// Compares the manifests with the packages of the Windows build (that of KITBAY_BITS, or
// KITBAY_UPDATE_PACKAGES).
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { inflateRawSync } from 'node:zlib';
import { UpdateSource } from './server.mjs';

const kKinds = ['addon', 'transport', 'channel'];

/**
 * Offers that nobody can request: the suite has the same version, or a rule withholds the button.
 */
const kWithoutPackage = ['canvas', 'ovlnet', 'VoiceNotes'];

let source;
before(async () => (source = await UpdateSource.start()));
after(() => source.close());

/** The entries of a manifest as {kind, attributes, and a field for each child element}. */
function offersOf(manifest) {
  const text = source.contentOf(manifest).toString();
  return kKinds.flatMap((kind) =>
    [...text.matchAll(new RegExp(`<${kind} ([^>]*)>(.*?)</${kind}>`, 'gs'))].map(([, start, inside]) => {
      const children = [...inside.matchAll(/<(\w+)>(.*?)<\/\1>/gs)].map(([, name, value]) => [name, value]);
      return { kind, attributes: [...start.matchAll(/(\w+)="([^"]*)"/g)].map(([, ...pair]) => pair),
               ...Object.fromEntries(children) };
    }),
  );
}

const idOf = (offer) => offer.attributes[0][1];
const allOffers = () => ['/ovalink.xml', '/partners.xml'].flatMap(offersOf);
const packageOf = (offer) => source.contentOf(new URL(offer.url).pathname);

/** The files of an archive, by name. */
function filesOf(archive) {
  const files = new Map();
  const end = archive.lastIndexOf('PK\x05\x06', undefined, 'latin1');
  let at = archive.readUInt32LE(end + 16);
  for (let count = archive.readUInt16LE(end + 10); count > 0; count--) {
    const [nameLength, extraLength, commentLength] = [28, 30, 32].map((offset) => archive.readUInt16LE(at + offset));
    const local = archive.readUInt32LE(at + 42);
    const start = local + 30 + archive.readUInt16LE(local + 26) + archive.readUInt16LE(local + 28);
    const packed = archive.subarray(start, start + archive.readUInt32LE(at + 20));
    const name = archive.toString('utf8', at + 46, at + 46 + nameLength);
    files.set(name, archive.readUInt16LE(at + 10) === 8 ? inflateRawSync(packed) : packed);
    at += 46 + nameLength + extraLength + commentLength;
  }
  return files;
}

/** The version in a library's version resource. */
function versionOf(library) {
  const at = library.indexOf(Buffer.from([0xbd, 0x04, 0xef, 0xfe]));
  assert.notEqual(at, -1, 'no version resource');
  return [10, 8, 14, 12].map((offset) => library.readUInt16LE(at + offset)).join('.');
}

test('each entry begins with its id and has everything that its kind needs', () => {
  const kCommon = ['name', 'version', 'description', 'url', 'progid', 'filename', 'category'];
  const kOwn = {
    addon: ['autoaccept', 'params', 'offline', 'dependencies'],
    transport: ['displayname', 'instructions'],
    channel: ['dependencies', 'xmlfilename'],
  };
  for (const offer of allOffers()) {
    assert.equal(offer.attributes[0][0], 'id');
    assert.equal(offer.kind === 'addon', offer.attributes.some(([name]) => name === 'type'), idOf(offer));
    for (const name of [...kCommon, ...kOwn[offer.kind]]) assert.ok(name in offer, `${idOf(offer)}: ${name}`);
    assert.match(offer.version, /^\d+(\.\d+)*$/);
  }
});

test('the sources offer entries that distinguish different readers', () => {
  const idsOf = (manifest, kind) => offersOf(manifest).filter((offer) => offer.kind === kind).map(idOf);
  assert.deepEqual(kKinds.map((kind) => idsOf('/ovalink.xml', kind)), [
    ['spellcheck', 'translator', 'chess', 'canvas', 'scrapbook'],
    ['ovlnet', 'postoffice', 'relay'],
    ['presence', 'weather', 'recipes', 'tides'],
  ]);
  assert.deepEqual(kKinds.map((kind) => idsOf('/partners.xml', kind)), [
    ['scrapbook', 'poll', 'VoiceNotes', 'autoreply'],
    ['meshnet', 'textgate'],
    ['slowodnia'],
  ]);
});

test('each offer that can be requested has its package', () => {
  const without = allOffers().filter((offer) => packageOf(offer) === null);
  assert.deepEqual(without.map(idOf).sort(), [...kWithoutPackage].sort());
});

test('the packages contain the libraries and files that the manifests name, in the offered version', () => {
  let libraries = 0;
  for (const offer of allOffers()) {
    const archive = packageOf(offer);
    if (archive === null) continue;
    const files = filesOf(archive);
    const named = new Set(`${offer.filename},${offer.dependencies ?? ''}`.split(',').filter((name) => name));
    // Several libraries of a messaging service are in a folder of their own.
    const folder = offer.kind === 'transport' && named.size > 1 ? `${idOf(offer)}/` : '';
    for (const name of named) {
      const library = files.get(folder + name);
      assert.ok(library, `${idOf(offer)}.zip has no ${folder}${name}`);
      const version = offer.kind === 'channel' ? `${offer.version}.0` : offer.version;
      assert.equal(versionOf(library), version, name);
      libraries++;
    }
    if (offer.xmlfilename) assert.match(files.get(offer.xmlfilename).toString(), /^<channel id="/);
  }
  assert.equal(libraries, 15);
  assert.deepEqual([...filesOf(source.contentOf('/packages/translator.zip')).keys()].sort(),
    ['OvlTranslate.dll', 'dictionaries/cs.txt']);
});
