// Packages that are damaged or harmful: what happens to them, from the click to the files.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { hostilePackages, zipOf } from '../../standins/update_source/hostile_packages.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, kFolder, sumOf } from './everything.mjs';
import {
  allButtonsOn,
  confirmMessage,
  Suite,
} from './harness.mjs';

const kExpansion = 'Kitbay...ExpandZipFile';

const evil = { bytes: zipOf([{ name: '../../evil.txt', bytes: 'evil' }]),
               entry: [75, 'Path/File access error: ..\\..\\evil.txt'] };
const link = { bytes: zipOf([{ name: 'first.txt', bytes: '1' }, { name: 'bin/link/evil.txt', bytes: 'evil' }]),
               entry: [75, 'Path/File access error: bin\\link\\evil.txt'] };
const kText = 'As it was delivered.\r\n';
const badSum = { bytes: zipOf([{ name: 'readme.txt', bytes: kText, sum: 1 }]) };
const short = { bytes: zipOf([{ name: 'short.txt', bytes: '12345', size: 9 }]) };
const zip64 = { bytes: zipOf([{ name: 'zip64.txt', bytes: kText, deflated: true, zip64: true }]) };

const addons = { ...hostilePackages, link, badsum: badSum, short, zip64 };
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

before(async () => {
  source = await UpdateSource.start();
  source.publish('/hostile.xml', manifest(source.origin));
  for (const { packages } of Object.values(kinds)) {
    for (const [id, { bytes }] of Object.entries(packages)) source.publish(`/packages/${id}.zip`, bytes);
  }
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/hostile.xml` });
  kitbay = suite.start();
  page = await kitbay.answeredPage();
  await kitbay.show('update', 'addons');
});
after(async () => {
  await kitbay?.dispose();
  await source?.close();
});

/** Clicks Install and returns the message, and the previous state of everything. */
async function install(kind, id) {
  const before = await everything(suite, page);
  await kitbay.press(kinds[kind].container, nameOf(id), 'Install');
  const text = await confirmMessage();
  await page.waitFor(allButtonsOn);
  return { text, before };
}

/** Demands that everything is as before, except for the downloaded package and `changes`. */
const changed = (before, kind, id, changes) =>
  demandOnly({ ...changes, working: { [`${id}.zip`]: sumOf(kinds[kind].packages[id].bytes) } }, before, suite, page);

/** Demands that a package is refused and leaves nothing, except `folder` if that is new. */
async function isRefused(kind, id, { folder = null, procedure, ending }) {
  const { text, before } = await install(kind, id);
  assert.equal(text, `Download of ${id}${ending}`);
  const [number, description] = kinds[kind].packages[id].entry;
  await changed(before, kind, id, {
    files: folder && { [folder]: kFolder },
    log: [
      [number, kExpansion, description],
      [0, procedure, 'There was an error creating the archive.'],
    ],
  });
}

const addonFolder = (id) => path.join(suite.folder, 'addons', id);
const asAddon = { procedure: 'Kitbay::UnPack', ending: '.zip is corrupt . Try again' };

for (const id of Object.keys(hostilePackages)) {
  test(`an addon's package is refused and leaves nothing behind: ${id}`, () =>
    isRefused('addon', id, { folder: addonFolder(id), ...asAddon }));
}

test('nothing is written through a link on disk', async () => {
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

for (const [what, id, name, bytes] of [
  ['a wrong sum is not noticed', 'badsum', 'readme.txt', kText],
  ['an entry cut short is not noticed', 'short', 'short.txt', '12345\0\0\0\0'],
  ['sizes in a zip64 field are read', 'zip64', 'zip64.txt', kText],
]) {
  test(what, async () => {
    await kitbay.show('update', 'addons');
    const { text, before } = await install('addon', id);
    assert.equal(
      text,
      `${nameOf(id)} addon has been successfully installed. Please restart Tessel to view the new feature.`,
    );
    const entry =
      `<addon id="${id}" name="${nameOf(id)}" visibility="show" type="tool"><progid>Ovl.${id}</progid>` +
      `<namespace>${id}</namespace><displayname>${nameOf(id)}</displayname><filename>readme.txt</filename>` +
      '<compatiblewithallclients>1</compatiblewithallclients><autoaccept>0</autoaccept>' +
      '<description>For trying out.</description><core>1</core><params> </params></addon>';
    await changed(before, 'addon', id, {
      files: { [addonFolder(id)]: kFolder, [path.join(addonFolder(id), name)]: sumOf(bytes) },
      registry: (registry, file) => (file === 0 ? registry.replace('</addons>', () => `${entry}</addons>`) : registry),
      rows: { updatedaddons: (rows) => rows.filter((row) => row.name !== nameOf(id)) },
    });
  });
}

test('the program ends as it should', async () => {
  assert.equal(await kitbay.close(), 0);
});
