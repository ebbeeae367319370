// Packages that are damaged, or made to do harm: what becomes of them from the click to the files.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { hostilePackages, zipOf } from '../../standins/update_source/hostile_packages.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  confirmMessage,
  prefixFolder,
  rowsOf,
  sourcesAnswered,
  Suite,
} from './harness.mjs';

const kExpansion = 'Kitbay...ExpandZipFile';
const kPatience = 60000;
const driveC = path.join(prefixFolder, 'drive_c');

const evil = { bytes: zipOf([{ name: '../../evil.txt', bytes: 'evil' }]),
               entry: [75, 'Path/File access error: ..\\..\\evil.txt'] };
const link = { bytes: zipOf([{ name: 'first.txt', bytes: '1' }, { name: 'bin/link/evil.txt', bytes: 'evil' }]),
               entry: [75, 'Path/File access error: bin\\link\\evil.txt'] };
const kText = 'As it was delivered.\r\n';
const badSum = { bytes: zipOf([{ name: 'readme.txt', bytes: kText, sum: 1 }]) };
const short = { bytes: zipOf([{ name: 'short.txt', bytes: '12345', size: 9 }]) };

const addons = { ...hostilePackages, link, badsum: badSum, short };
const kinds = {
  addon: { packages: addons, container: 'updatedaddons', tab: 'addons' },
  transport: { packages: { eviltransport: evil }, container: 'updatedtransports', tab: 'trans' },
  channel: { packages: { evilchannel: evil }, container: 'updatedchannels', tab: 'channels' },
};
const nameOf = (id) => `The ${id} one`;

const entryOf = (kind, id, origin) => `<${kind} id="${id}" ${kind === 'addon' ? 'type="tool"' : ''}>
  <name>${nameOf(id)}</name><version>1.0.0.0</version><description>For trying out.</description>
  <url>${origin}/packages/${id}.zip</url><progid>Ovl.${id}</progid><filename>readme.txt</filename>
  <category>sample</category><autoaccept>0</autoaccept><params></params><offline>0</offline>
  <dependencies></dependencies><displayname>${nameOf(id)}</displayname><instructions></instructions>
  <xmlfilename></xmlfilename></${kind}>`;
const manifest = (origin) => `<components>${Object.entries(kinds)
  .map(([kind, { packages }]) =>
    `<${kind}s>${Object.keys(packages).map((id) => entryOf(kind, id, origin)).join('')}</${kind}s>`)
  .join('')}</components>`;

let source;
let suite;
let kitbay;
let page;
let registryFiles;

before(async () => {
  source = await UpdateSource.start();
  source.publish('/hostile.xml', manifest(source.origin));
  for (const { packages } of Object.values(kinds)) {
    for (const [id, { bytes }] of Object.entries(packages)) source.publish(`/packages/${id}.zip`, bytes);
  }
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/hostile.xml` });
  registryFiles = suite.registryFiles();
  kitbay = suite.start();
  page = await kitbay.page();
  await page.waitFor(sourcesAnswered, kPatience);
  await kitbay.show('update', 'addons');
});
after(async () => {
  await kitbay?.dispose();
  await source?.close();
});

/** Every path below the suite's folders, the working folder and the log aside, with its content's sum. */
function files() {
  const found = new Map(fs.readdirSync(driveC).map((name) => [path.join(driveC, name), '']));
  const look = (folder) => {
    for (const entry of fs.readdirSync(folder, { withFileTypes: true })) {
      const place = path.join(folder, entry.name);
      if (place === suite.workingFolder || place === suite.log) continue;
      const bytes = entry.isFile() ? fs.readFileSync(place) : null;
      found.set(place, bytes ? createHash('sha256').update(bytes).digest('hex') : 'no file');
      if (entry.isDirectory()) look(place);
    }
  };
  look(path.dirname(suite.folder));
  look(suite.userFolder);
  return found;
}

const logged = () =>
  suite.logEntries().map(({ number, procedure, description }) => [number, procedure, description]);

/** Clicks on Install and gives what there is to see and to find then. */
async function install(kind, id) {
  const entries = logged();
  await kitbay.press(kinds[kind].container, nameOf(id), 'Install');
  const text = await confirmMessage();
  await page.waitFor(allButtonsOn, kPatience);
  const download = path.join(suite.workingFolder, `${id}.zip`);
  assert.deepEqual(fs.readFileSync(download), kinds[kind].packages[id].bytes);
  return { text, entries: logged().slice(entries.length) };
}

/** Demands that a package is refused, and that nothing but `folder`, when it is new, comes of it. */
async function isRefused(kind, id, { folder = null, procedure, ending }) {
  const before = files();
  const { text, entries } = await install(kind, id);
  assert.equal(text, `Download of ${id}${ending}`);
  const [number, description] = kinds[kind].packages[id].entry;
  assert.deepEqual(entries, [
    [number, kExpansion, description],
    [0, procedure, 'There was an error creating the archive.'],
  ]);
  if (folder) before.set(folder, 'no file');
  assert.deepEqual(new Map([...files()].sort()), new Map([...before].sort()));
  assert.deepEqual(suite.registryFiles(), registryFiles);
  const rows = (await page.eval(rowsOf(kinds[kind].container))).map(({ name }) => name);
  assert.ok(rows.includes(nameOf(id)), 'the component is still on offer');
}

const addonFolder = (id) => path.join(suite.folder, 'addons', id);
const asAddon = { procedure: 'Kitbay::UnPack', ending: '.zip is corrupt . Try again' };

for (const id of Object.keys(hostilePackages)) {
  test(`an addon's package is refused and leaves nothing behind: ${id}`, () =>
    isRefused('addon', id, { folder: addonFolder(id), ...asAddon }));
}

test('nothing is written through a link that lies on disk', async () => {
  const outside = path.join(suite.folder, 'outside');
  fs.mkdirSync(outside);
  fs.mkdirSync(path.join(addonFolder('link'), 'bin'), { recursive: true });
  fs.symlinkSync(outside, path.join(addonFolder('link'), 'bin/link'));
  await isRefused('addon', 'link', asAddon);
  assert.deepEqual(fs.readdirSync(outside), []);
});

test("a messaging service's package is refused and leaves nothing behind", async () => {
  await kitbay.show('update', 'trans');
  await isRefused('transport', 'eviltransport', {
    procedure: 'Kitbay::UnPackTransport',
    ending: '.zip is corrupt . Try again',
  });
});

test("a channel's package is refused and leaves nothing behind", async () => {
  await kitbay.show('update', 'channels');
  await isRefused('channel', 'evilchannel', {
    folder: path.join(path.dirname(suite.customRegistry), 'channels/evilchannel'),
    procedure: 'Kitbay::UnPackChannel',
    ending: '.zip is corrupt .Try again',
  });
});

test('a wrong sum and an entry cut short are not noticed', async () => {
  await kitbay.show('update', 'addons');
  for (const [id, name, bytes] of [['badsum', 'readme.txt', kText], ['short', 'short.txt', '12345\0\0\0\0']]) {
    const { text, entries } = await install('addon', id);
    assert.equal(
      text,
      `${nameOf(id)} addon has been successfully installed. Please restart Tessel to view the new feature.`,
    );
    assert.equal(fs.readFileSync(path.join(addonFolder(id), name), 'latin1'), bytes);
    assert.ok(entries.every(([, procedure]) => procedure !== kExpansion));
    assert.ok(suite.lastInDatastore('addon').startsWith(`<addon id="${id}"`));
  }
});

test('the program ends as it should', async () => {
  assert.equal(await kitbay.close(), 0);
});
