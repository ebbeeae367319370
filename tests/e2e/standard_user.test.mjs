// A standard user, on a suite that is somebody else's: an ordinary user of this system, to whom the
// machine's keys refuse writing, whose classes are not the machine's, and who never ran the main client.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { standardUser } from './worlds.mjs';

const kUninstallKey = 'SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tessel';
const kWhy = 'You have no right to change files in C:\\Program Files\\Ovalink.';
const kWhatToDo =
  "\n\nStart Kitbay again and allow it an administrator's rights, or ask an administrator.";
const kNotice =
  `${kWhy} Kitbay shows what is installed, but it cannot ask the update sources, and it cannot install, ` +
  `update or remove anything.${kWhatToDo}`;
const kAnswer = `${kWhy} Kitbay cannot install, update or remove anything there.${kWhatToDo}`;

const source = await UpdateSource.start();
let harness;
let suite;
let before_;
let kitbay;
let page;

/** Every file below the suite's folder with its bytes. */
const contents = () =>
  Object.fromEntries(
    fs.readdirSync(suite.folder, { recursive: true, withFileTypes: true })
      .filter((entry) => entry.isFile())
      .map((entry) => path.join(entry.parentPath ?? entry.path, entry.name))
      .map((file) => [file, fs.readFileSync(file, 'base64')]),
  );

/** The suite as an administrator leaves it who has run Kitbay once today. */
async function prepare() {
  harness = await import('./harness.mjs');
  suite = await harness.Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  const administrators = suite.start();
  await (await administrators.page()).waitFor(harness.sourcesAnswered);
  assert.equal(await administrators.close(), 0);
  await administrators.dispose();
  // Asked again if somebody may.
  const manifest = path.join(suite.programFolder, 'ovalink.xml');
  fs.utimesSync(manifest, new Date(0), new Date(0));
  const starter = path.join(harness.buildFolder, 'tests/e2e/standard_user/standard_user.exe');
  fs.copyFileSync(starter, path.join(suite.programFolder, 'standard_user.exe'));
  fs.rmSync(suite.userFolder, { recursive: true });
}

const skip = (await standardUser(prepare, [kUninstallKey, 'Software\\Classes\\ovl'])) ?? false;

before(async () => {
  if (skip) return;
  before_ = contents();
  source.requests.length = 0;
});
after(async () => {
  if (!skip) await harness.run(path.join(harness.root, 'tools/wine_prefix'), ['--stop']);
  await source.close();
});

const start = () => harness.Program.start(path.join(suite.programFolder, 'standard_user.exe'));

test('the user is asked for rights once, and without them told why nothing can be changed', { skip }, async () => {
  kitbay = start();
  page = await kitbay.page();
  await page.waitFor(harness.sourcesAnswered);
  assert.equal(await harness.confirmMessage(), kNotice);
  assert.equal((await harness.windows()).filter(harness.isKitbay).length, 1);
});

test('what is installed is shown, with what manifests that are there offer', { skip }, async () => {
  const names = async (container) => (await page.eval(harness.rowsOf(container))).map(({ name }) => name);
  assert.ok((await names('installedaddons')).includes('Chess'));
  assert.ok((await names('installedtransports')).length > 0);
  assert.ok((await names('installedchannels')).length > 0);
  assert.ok((await names('updatedaddons')).includes('Scrapbook'));
});

for (const { name, button, category, tab, container } of [
  { name: 'Chess', button: 'Update', category: 'installed', tab: 'addons', container: 'installedaddons' },
  { name: 'Chess', button: 'Remove', category: 'installed', tab: 'addons', container: 'installedaddons' },
  { name: 'Scrapbook', button: 'Install', category: 'update', tab: 'addons', container: 'updatedaddons' },
]) {
  test(`${button} says so again, and changes nothing`, { skip }, async () => {
    await kitbay.show(category, tab);
    await kitbay.press(container, name, button);
    assert.equal(await harness.confirmMessage(), kAnswer);
    await page.waitFor(harness.allButtonsOn);
  });
}

test('the protocol goes to the user where the machine refuses it', { skip }, async () => {
  assert.match((await harness.probe('registry')).GetAppDataPath, /AppData\\Roaming$/i);
  const command = 'HKCU\\Software\\Classes\\ovl\\shell\\open\\command';
  assert.match(await harness.wine('reg', 'query', command, '/ve'), /Kitbay\.exe" %1/);
});

test('the list of directories is the user\'s own, and is changed', { skip }, async () => {
  const file = path.join(suite.userFolder, 'updatepreference.xml');
  assert.ok(fs.statSync(path.join(suite.userFolder, 'CustomData')).isDirectory());
  assert.match(fs.readFileSync(file, 'utf8'), /ovalink\.xml/);
});

test('a second start raises the window and ends', { skip }, async () => {
  await harness.probe('minimize', 'Kitbay');
  await harness.eventually('the minimised window', async () =>
    (await harness.windows()).find(harness.isKitbay)?.minimized);
  const second = start();
  await second.ended();
  await second.dispose();
  const [window, ...others] = (await harness.windows()).filter(harness.isKitbay);
  assert.deepEqual([window.minimized, others], [false, []]);
});

test('the end leaves the suite as it was, and no source was asked', { skip }, async () => {
  assert.equal(await kitbay.close(), 2, 'the first process and the one that it started');
  await kitbay.dispose();
  assert.deepEqual(contents(), before_);
  assert.equal(fs.existsSync(suite.workingFolder), false);
  assert.deepEqual(source.requests, []);
});
