// A standard user, on a suite that belongs to somebody else: an ordinary user of this system, whom
// the machine's keys refuse writing, whose classes are separate from the machine's, and who never
// ran the main client.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { endStandardUser, standardUser } from './worlds.mjs';

// Wine checks the access list of a key itself, not of the one above it, when a key is created.
const kKeys = ['SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tessel', 'Software\\Classes\\ovl'];
const kFolder = 'C:\\Program Files\\Ovalink';
const kWhy = `You do not have permission to change files in ${kFolder}.`;
const kOffer = '\n\nStart Kitbay again and agree when Windows asks for an administrator, or ask one for help.';
const kNotice =
  `${kWhy} Kitbay shows what is installed, but it cannot ask the update sources, and it cannot install, ` +
  'update or remove anything.';
const kAnswer = `${kWhy} Kitbay cannot install, update or remove anything there.`;

const source = await UpdateSource.start();
let harness;
let suite;
let owners;
let kitbay;
let page;

/** Every file and folder below the suite's folder, files with their bytes. */
const contents = () =>
  Object.fromEntries(
    fs.readdirSync(suite.folder, { recursive: true, withFileTypes: true })
      .map((entry) => [path.join(entry.parentPath ?? entry.path, entry.name), entry])
      .map(([file, entry]) => [file, entry.isFile() ? fs.readFileSync(file, 'base64') : 'a folder']),
  );

/** The suite as an administrator leaves it who ran Kitbay some days ago. */
async function prepare() {
  harness = await import('./harness.mjs');
  harness.patience.begin();
  suite = await harness.Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  const administrators = suite.start();
  await (await administrators.page()).waitFor(harness.sourcesAnswered);
  assert.equal(await administrators.close(), 0);
  await administrators.dispose();
  fs.rmSync(suite.log);
  fs.utimesSync(path.join(suite.programFolder, 'ovalink.xml'), new Date(0), new Date(0));
  fs.rmSync(suite.userFolder, { recursive: true });
  return suite.folder;
}

const skip = (await standardUser(prepare, kKeys)) ?? false;

before(() => {
  if (skip) return;
  suite = new harness.Suite();
  owners = contents();
  source.requests.length = 0;
});
after(async () => {
  if (!skip) endStandardUser(suite.folder);
  await source.close();
});

const start = () =>
  harness.Program.start(harness.starter, '--limited', '--with', 'consent.dll', `${kFolder}\\Kitbay\\Kitbay.exe`);
const namesIn = async (container) => (await page.eval(harness.rowsOf(container))).map(({ name }) => name);
const windowsOfKitbay = async () => (await harness.windows()).filter(harness.isKitbay);

test('this process may not write what the world refuses', { skip }, async () => {
  assert.throws(() => suite.write('Temp/file', ''), { code: 'EACCES' });
  assert.throws(() => fs.appendFileSync(suite.datastore, ''), { code: 'EACCES' });
  for (const key of kKeys) {
    await assert.rejects(harness.wine('reg', 'add', `HKLM\\${key}`, '/v', 'New', '/f'), { code: 1 });
  }
});

test('the user is asked for rights, and told why nothing can be changed without them', { skip }, async () => {
  kitbay = start();
  assert.equal(await harness.confirmMessage('&No'), `${kFolder}\\Kitbay\\Kitbay.exe`);
  page = await kitbay.answeredPage();
  assert.equal(await harness.confirmMessage(), kNotice + kOffer);
  assert.equal((await windowsOfKitbay()).length, 1);
});

test('what is installed is shown, with the offers of stored manifests', { skip }, async () => {
  assert.ok((await namesIn('installedaddons')).includes('Chess'));
  assert.ok((await namesIn('installedtransports')).includes('Postoffice'));
  assert.ok((await namesIn('installedchannels')).includes('Presence'));
  assert.ok((await namesIn('updatedaddons')).includes('Scrapbook'));
});

for (const { name, button, category, tab, container } of [
  { name: 'Chess', button: 'Update', category: 'installed', tab: 'addons', container: 'installedaddons' },
  { name: 'Chess', button: 'Remove', category: 'installed', tab: 'addons', container: 'installedaddons' },
  { name: 'Postoffice', button: 'Update', category: 'installed', tab: 'trans', container: 'installedtransports' },
  { name: 'Postoffice', button: 'Remove', category: 'installed', tab: 'trans', container: 'installedtransports' },
  { name: 'Presence', button: 'Update', category: 'installed', tab: 'channels', container: 'installedchannels' },
  { name: 'Morning Headlines', button: 'Remove', category: 'installed', tab: 'channels', container: 'installedchannels' },
  { name: 'Scrapbook', button: 'Install', category: 'update', tab: 'addons', container: 'updatedaddons' },
  { name: 'Relay', button: 'Install', category: 'update', tab: 'trans', container: 'updatedtransports' },
  { name: 'Tides', button: 'Install', category: 'update', tab: 'channels', container: 'updatedchannels' },
]) {
  test(`${button} of ${name} says so again, and changes nothing`, { skip }, async () => {
    await kitbay.show(category, tab);
    await kitbay.press(container, name, button);
    assert.equal(await harness.confirmMessage(), kAnswer + kOffer);
    await page.waitFor(harness.allButtonsOn);
    assert.ok((await namesIn(container)).includes(name));
  });
}

test("the user's own folders are created, and the list of directories in them", { skip }, () => {
  assert.ok(fs.statSync(path.join(suite.userFolder, 'CustomData')).isDirectory());
  assert.match(fs.readFileSync(path.join(suite.userFolder, 'updatepreference.xml'), 'utf8'), /ovalink\.xml/);
});

test("Kitbay's classes and the protocol are registered for the user if the machine refuses them", { skip }, async () => {
  const command = 'HKCU\\Software\\Classes\\ovl\\shell\\open\\command';
  await assert.rejects(harness.wine('reg', 'query', command), { code: 1 });
  assert.match((await harness.probe('registry')).GetAppDataPath, /AppData\\Roaming$/i);
  assert.match(await harness.wine('reg', 'query', command, '/ve'), /Kitbay\.exe" %1/);
  await harness.wine('reg', 'query', 'HKCU\\Software\\Classes\\Kitbay.Manager\\CLSID');
});

test('a second start raises the window and ends', { skip }, async () => {
  await harness.probe('minimize', 'Kitbay');
  await harness.eventually('the minimised window', async () => (await windowsOfKitbay())[0]?.minimized);
  const second = start();
  assert.equal(await second.ended(), 1);
  await second.dispose();
  assert.deepEqual((await windowsOfKitbay()).map(({ minimized }) => minimized), [false]);
});

test('the end leaves the suite as it was, and no source was contacted', { skip }, async () => {
  assert.equal(await kitbay.close(), 1, 'one process');
  await kitbay.dispose();
  assert.deepEqual(contents(), owners);
  assert.deepEqual(source.requests, []);
});

test('a start that gains no right to the folder, though the user agreed, does not ask again', { skip }, async () => {
  kitbay = start();
  await harness.confirmMessage('&Yes');
  page = await kitbay.answeredPage();
  const [notice, whatToDo] = (await harness.confirmMessage()).split(/(?=\n\n)/);
  // Wine may or may not start it elevated, but that opens nothing that this system refuses.
  assert.equal(notice, kNotice);
  assert.ok([kOffer, '\n\nAsk the person who manages that folder.'].includes(whatToDo), whatToDo);
  assert.equal((await windowsOfKitbay()).length, 1);
  assert.equal(await kitbay.close(), 2, 'two processes');
  await kitbay.dispose();
  assert.deepEqual(contents(), owners);
});
