// A source that signs its manifests, controlled by an attacker who has its server but not its key:
// nothing is written, and the user is told.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, afterEach, before, test } from 'node:test';
import { dayFromToday, Maker, withDigests } from '../../standins/update_source/maker.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, sumOf } from './everything.mjs';
import {
  allButtonsOn, confirmMessage, eventually, messages, rowsOf, sourcesAnswered, Suite,
} from './harness.mjs';

const maker = new Maker(1);
const manifestPath = '/ovalink.xml';
const signedBefore = 5;

/** More than can be on its way from a server, unread. */
const kOnItsWay = 16 * 1024 * 1024;

let source;
let suite;
let kitbay;
let page;
let honest; // the manifest without a signature
let cached; // the previous manifest, as the file in the cache

const sourceFile = () => path.join(suite.userFolder, 'updatepreference.xml');
const cachedFile = () => path.join(suite.programFolder, 'ovalink.xml');
/** How many sources offer Scrapbook on the page; partners.xml does too. */
const offersOfScrapbook = async () =>
  (await page.eval(rowsOf('updatedaddons'))).filter(({ name }) => name === 'Scrapbook').length;
const ofYesterday = () => {
  const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
  fs.utimesSync(cachedFile(), yesterday, yesterday);
};

async function start() {
  kitbay = suite.start();
  page = await kitbay.page();
}

before(async () => {
  source = await UpdateSource.start();
  honest = withDigests(source, source.contentOf(manifestPath));
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}${manifestPath}` });
  suite.write(
    'Kitbay/DirectoryPreference.xml',
    `<root><preferences><preference url='${source.host}${manifestPath}' key='${maker.key}'/></preferences></root>`,
  );
  suite.addSources(`${source.host}/partners.xml`);
});
afterEach(() => kitbay?.dispose());
after(() => source.close());

test('an honest manifest is accepted, its number is recorded, and its packages are installed', async () => {
  source.publish(manifestPath, maker.sign(honest, { serial: signedBefore }));
  await start();
  await page.waitFor(sourcesAnswered);
  cached = fs.readFileSync(cachedFile(), 'utf8');
  assert.equal(cached, source.contentOf(manifestPath).toString());
  assert.match(
    fs.readFileSync(sourceFile(), 'utf8'),
    new RegExp(`<preference url="${source.host}${manifestPath}" key="${maker.key}" serial="${signedBefore}"/>`),
  );
  await kitbay.show('update', 'channels');
  await kitbay.press('updatedchannels', 'Tides', 'Install');
  assert.match(await confirmMessage(), /^Tides Channel has been successfully installed/);
  await page.waitFor(allButtonsOn);
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});

/**
 * What the attacker's source serves in place of the honest one: an entry with the attacker's
 * library.
 */
const forged = (text) => text.replace('OvlScrapbook.dll', 'Evil.dll');

/** The manifest with the first entry of another one. */
function mixed(text, other) {
  const [entry] = /<addon id="spellcheck"[^]*?<\/addon>/.exec(other);
  return text.replace(/<addon id="spellcheck"[^]*?<\/addon>/, () => entry);
}

const manifestAttacks = [
  {
    what: 'a forged manifest under the honest signature',
    serve: () => forged(maker.sign(honest, { serial: 6 })),
    told: 'was changed after it was signed',
  },
  { what: 'a manifest without a signature', serve: () => forged(honest), told: 'is not signed' },
  {
    what: 'a signature that was stripped of its value',
    serve: () => maker.sign(honest, { serial: 6 }).replace(/ed25519="\w+"/, 'ed25519=""'),
    told: 'has a signature that cannot be read',
  },
  {
    what: 'a manifest signed with another key',
    serve: () => new Maker(2).sign(forged(honest), { serial: 6 }),
    told: 'is signed with another key',
  },
  {
    what: 'a manifest signed with another key under the name of the honest one',
    serve: () =>
      new Maker(2).sign(forged(honest), { serial: 6 }).replace(new Maker(2).key.slice(0, 16), maker.key.slice(0, 16)),
    told: 'was changed after it was signed',
  },
  {
    what: 'the manifest of another source of that maker',
    serve: () => maker.sign(forged(honest), { file: 'more.xml', serial: 900 }),
    told: 'is signed as more.xml',
  },
  {
    what: 'a replayed older manifest',
    serve: () => maker.sign(honest.replace('1.0.2.0', '1.0.1.0'), { serial: signedBefore - 1 }),
    told: `is number ${signedBefore - 1} of its source, older than number ${signedBefore} seen before`,
  },
  {
    what: 'a manifest frozen past its last day',
    serve: () => maker.sign(honest, { serial: 6, until: dayFromToday(-1) }),
    told: `held until ${dayFromToday(-1)} only`,
  },
  {
    what: 'entries mixed from two manifests',
    serve: () => {
      const [older, newer] = [5, 6].map((serial) =>
        maker.sign(honest.replace('2.4.2.3', `2.4.2.${serial}`), { serial }));
      return mixed(newer, older);
    },
    told: 'was changed after it was signed',
  },
  {
    what: 'a manifest cut off before its signature',
    serve: () => maker.sign(honest, { serial: 6 }).replace(/\n<!--[^]*$/, '\n'),
    told: 'is not signed',
  },
  {
    what: 'a redirection to a manifest without a signature',
    serve: () => maker.sign(honest, { serial: 6 }),
    misbehave: () => {
      source.publish('/elsewhere/list.xml', forged(honest));
      source.misbehave(manifestPath, 'redirect', { to: '/elsewhere/list.xml' });
    },
    told: 'is not signed',
  },
];

for (const { what, serve, misbehave, told } of manifestAttacks) {
  test(`${what} is a failed source, and what was fetched before stays listed`, async () => {
    fs.writeFileSync(cachedFile(), cached);
    ofYesterday();
    const preferences = fs.readFileSync(sourceFile());
    const registry = suite.registryFiles();
    source.publish(manifestPath, serve());
    misbehave?.();
    fs.rmSync(path.join(suite.programFolder, 'partners.xml'), { force: true });

    await start();
    assert.equal(await confirmMessage(), `${manifestPath}      ovalink.xml ${told}`);
    await page.waitFor(sourcesAnswered);
    assert.equal((await source.request('/partners.xml')).path, '/partners.xml'); // the next one was asked
    await kitbay.show('update', 'addons');
    assert.equal(await offersOfScrapbook(), 2);
    assert.equal(await kitbay.close(), 0);

    source.behave();
    assert.equal(fs.readFileSync(cachedFile(), 'utf8'), cached);
    assert.deepEqual(fs.readFileSync(sourceFile()), preferences);
    assert.deepEqual(suite.registryFiles(), registry);
    assert.deepEqual(suite.manifests().sort(), ['ovalink.xml', 'partners.xml']);
    assert.deepEqual(
      suite.logEntries().map(({ procedure, description }) => [procedure, description]),
      ['Kitbay::CheckSignature', 'Kitbay::OvTransportEvents_Exception'].map((name) => [name, `ovalink.xml ${told}`]),
    );
  });
}

test('a manifest without an end is cut off, and what was fetched before stays listed', async () => {
  fs.writeFileSync(cachedFile(), cached);
  ofYesterday();
  source.publish(manifestPath, honest);
  const endless = source.misbehave(manifestPath, 'endless');
  await start();
  const told = "The server's list of components is larger than 64 MB";
  assert.equal(await confirmMessage(), `${manifestPath}      ${told}`);
  await page.waitFor(sourcesAnswered);
  assert.ok(endless.sent() < 64 * 1024 * 1024 + kOnItsWay, `${endless.sent()} bytes`);
  assert.equal(fs.readFileSync(cachedFile(), 'utf8'), cached);
  assert.deepEqual(suite.manifests().sort(), ['ovalink.xml', 'partners.xml']);
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(
    suite.logEntries().map(({ procedure, description }) => [procedure, description]),
    [['Kitbay::OvTransportEvents_Exception', told]],
  );
  source.behave();
  source.publish(manifestPath, maker.sign(honest, { serial: 6 }));
  await start();
  await page.waitFor(sourcesAnswered);
  assert.equal(fs.readFileSync(cachedFile(), 'utf8'), source.contentOf(manifestPath).toString());
  assert.equal(await kitbay.close(), 0);
});

test('a manifest changed on disk is not listed, is reported, and is fetched again', async () => {
  source.publish(manifestPath, maker.sign(honest, { serial: 6 }));
  fs.writeFileSync(cachedFile(), forged(cached)); // dated today, so it would not be requested
  await start();
  assert.match(await confirmMessage(), /ovalink\.xml was changed after it was signed$/);
  await page.waitFor(sourcesAnswered);
  assert.equal(fs.readFileSync(cachedFile(), 'utf8'), source.contentOf(manifestPath).toString());
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(
    suite.logEntries().map(({ procedure, description }) => [procedure, description]),
    [['Kitbay::CheckSignature', 'ovalink.xml was changed after it was signed']],
  );
});

test('a manifest changed on disk whose source also fails offers nothing', async () => {
  source.publish(manifestPath, forged(honest));
  fs.writeFileSync(cachedFile(), forged(cached));
  await start();
  // The source is asked while the first message is still shown.
  await eventually('both messages', async () => (await messages()).length === 2);
  await confirmMessage();
  await confirmMessage();
  await page.waitFor(sourcesAnswered); // partners.xml is dated today
  await kitbay.show('update', 'addons');
  assert.equal(await offersOfScrapbook(), 1);
  assert.equal(await kitbay.close(), 0);
});

const kScrapbook = '/packages/scrapbook.zip';
const corrupt = 'Download of scrapbook.zip is corrupt . Try again';
const refusal = (why) => [
  [-2146893822, 'Kitbay::CheckSignature', `ovalink.xml ${why}`],
  [0, 'Kitbay::UnPack', 'There was an error creating the archive.'],
];
const sizeOf = (bytes) => `announces ${source.contentOf(kScrapbook).length} bytes, and the package has ${bytes}`;

const packageAttacks = [
  {
    what: 'a package swapped for another of its size',
    serve: (package_) => {
      const other = Buffer.from(package_);
      other[other.length >> 1] ^= 1;
      return other;
    },
    why: () => 'announces a package of another SHA-256',
  },
  {
    what: 'the package of another component',
    serve: () => source.contentOf('/packages/chess.zip'),
    why: (bytes) => sizeOf(bytes),
  },
  {
    what: 'a package cut short',
    serve: (package_) => package_.subarray(0, package_.length >> 1),
    why: (bytes) => sizeOf(bytes),
  },
];

/** The package is honest, and the manifest in the cache is changed while it is on its way. */
async function manifestChangedMeanwhile() {
  const before = await everything(suite, page);
  const held = source.misbehave(kScrapbook, 'stall');
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  await held.reached;
  const manifest = fs.readFileSync(cachedFile());
  fs.writeFileSync(cachedFile(), forged(manifest.toString()));
  await held.rest();
  assert.equal(await confirmMessage(), corrupt);
  await page.waitFor(allButtonsOn);
  fs.writeFileSync(cachedFile(), manifest);
  source.behave();
  const [changed, expanded] = refusal('was changed after it was signed');
  const unread = [91, 'Kitbay::enterAddon', 'Object variable or With block variable not set: no manifest has an entry of "scrapbook"'];
  const log = [[-2146893818, ...changed.slice(1)], unread, expanded];
  await demandOnly({ log, working: { 'scrapbook.zip': sumOf(source.contentOf(kScrapbook)) } }, before, suite, page);
}

test('packages that are not what was signed are not opened; then the honest one is installed', async () => {
  fs.rmSync(cachedFile(), { force: true });
  source.publish(manifestPath, maker.sign(honest, { serial: 7 }));
  const honestPackage = source.contentOf(kScrapbook);
  const attacks = packageAttacks.map(({ what, serve, why }) => {
    const content = serve(honestPackage);
    return { what, content, why: why(content.length) };
  });
  await start();
  await page.waitFor(sourcesAnswered);
  await kitbay.show('update', 'addons');
  for (const { what, content, why } of attacks) {
    source.publish(kScrapbook, content);
    const before = await everything(suite, page);
    await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
    assert.equal(await confirmMessage(), corrupt, what);
    await page.waitFor(allButtonsOn);
    await demandOnly({ log: refusal(why), working: { 'scrapbook.zip': sumOf(content) } }, before, suite, page);
  }
  const tooLarge = `The server's file is larger than the ${honestPackage.length} bytes announced for it`;
  for (const [what, misbehave] of [
    ['one byte too many', () => source.publish(kScrapbook, Buffer.concat([honestPackage, Buffer.from('x')]))],
    ['bytes without an end', () => source.misbehave(kScrapbook, 'endless')],
  ]) {
    const before = await everything(suite, page);
    const endless = misbehave();
    await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
    assert.equal(await confirmMessage(), `//${source.host}${kScrapbook}      ${tooLarge}`, what);
    await page.waitFor(allButtonsOn);
    assert.ok(!(endless?.sent() > honestPackage.length + kOnItsWay), `${endless?.sent()} bytes`);
    await demandOnly({ log: [[0, 'Kitbay::OvTransportEvents_Exception', tooLarge]] }, before, suite, page);
  }
  source.behave();
  source.publish(kScrapbook, honestPackage);
  await manifestChangedMeanwhile();
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  assert.match(await confirmMessage(), /^Scrapbook addon has been successfully installed/);
  await page.waitFor(allButtonsOn);
  assert.equal(await kitbay.close(), 0);
});
