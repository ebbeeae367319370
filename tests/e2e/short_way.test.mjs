// The short way through: start, lists, an update, an installation, a removal, the end. With the
// bitness that the other tests do not use, only this runs.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, placed, sumOf } from './everything.mjs';
import {
  allButtonsOn,
  buildFolder,
  confirmMessage,
  MainClient,
  registeredLibrary,
  root,
  rowsOf,
  Suite,
  windowsPath,
} from './harness.mjs';
import { bits } from '../../tools/windows_build.mjs';
import { canonicalXml } from './xml.mjs';

/** The files that a package contains. */
const content = (id) => path.join(buildFolder, 'standins/update_source/content', id);

let source;
let suite;
let client;
let kitbay;
let page;

before(async () => {
  source = await UpdateSource.start();
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  client = new MainClient(suite);
});
after(async () => {
  await kitbay?.dispose();
  await client.close();
  await source.close();
});

const rowIn = async (container, wanted) =>
  (await page.eval(rowsOf(container))).find(({ name }) => name === wanted);
const kEntry = /<addon id="scrapbook"[^]*?<\/addon>/;

test('a start lists what is installed and what the source offers', async () => {
  kitbay = suite.start();
  page = await kitbay.answeredPage();
  const { version, buttons } = await rowIn('installedaddons', 'Chess');
  assert.deepEqual([version, buttons], ['Version 1.1.0.64', ['Remove', 'Update']]);
  assert.deepEqual((await rowIn('updatedaddons', 'Scrapbook')).buttons, ['Install']);
});

test('an update closes the main client, replaces the library and starts the client again', async () => {
  await client.start();
  await kitbay.show('installed', 'addons');
  await kitbay.press('installedaddons', 'Chess', 'Update');
  await confirmMessage();
  await client.event(3, 'the restart of the main client');
  await page.waitFor(allButtonsOn);
  const library = path.join(suite.folder, 'addons/chess/OvlChess.dll');
  assert.deepEqual(fs.readFileSync(library), fs.readFileSync(path.join(content('chess'), 'OvlChess.dll')));
  assert.equal(await registeredLibrary('OvlChess.Game'), windowsPath(library));
  await client.close();
});

test('an installation expands, registers and enters a component', async () => {
  await kitbay.show('update', 'addons');
  const before = await everything(suite, page);
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  assert.equal(
    await confirmMessage(),
    'Scrapbook addon has been successfully installed. Please restart Tessel to view the new feature.',
  );
  await page.waitFor(allButtonsOn);
  const place = path.join(suite.folder, 'addons/scrapbook');
  const [entry] = kEntry.exec(canonicalXml(suite.registryFiles()[0]));
  await demandOnly(
    {
      files: placed(content('scrapbook'), place),
      registry: (text, file) => (file === 0 ? text.replace('</addons>', () => `${entry}</addons>`) : text),
      rows: { updatedaddons: (rows) => rows.filter(({ name }) => name !== 'Scrapbook') },
      working: { 'scrapbook.zip': sumOf(source.contentOf('/packages/scrapbook.zip')) },
    },
    before,
    suite,
    page,
  );
  assert.equal(await registeredLibrary('OvlScrapbook.Book'), windowsPath(path.join(place, 'OvlScrapbook.dll')));
});

test('a removal takes the row and the entry of what was installed, and leaves its files', async () => {
  await kitbay.show('installed', 'addons');
  const before = await everything(suite, page);
  await kitbay.press('installedaddons', 'Scrapbook', 'Remove');
  assert.equal(await confirmMessage(), 'Are you sure you want to Remove the Scrapbook Addon.');
  await page.waitFor(`!installedaddons.innerText.includes('Scrapbook')`);
  await demandOnly(
    {
      registry: (text) => text.replace(kEntry, ''),
      rows: { installedaddons: (rows) => rows.filter(({ name }) => name !== 'Scrapbook') },
    },
    before,
    suite,
    page,
  );
});

test('the end leaves an empty log and no working folder', async () => {
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
  assert.equal(fs.existsSync(suite.workingFolder), false);
});

test('a suite of the other bitness is reported at the start, and its components are listed', async () => {
  const other = bits === '32' ? '64' : '32';
  const exe = 'standins/main_client/Tessel.exe';
  fs.copyFileSync(path.join(root, `build/win${other}`, exe), path.join(suite.folder, 'Tessel.exe'));
  // A 32-bit Windows has only one view.
  if (bits === '64') await suite.moveUninstallEntryTo32();
  kitbay = suite.start();
  assert.equal(
    await confirmMessage(),
    `Tessel is a ${other}-bit program, but this is the ${bits}-bit Kitbay. It cannot register the libraries of ` +
      `components; the ${other}-bit Kitbay can. To get it, run Kitbay's installer again.`,
  );
  page = await kitbay.answeredPage();
  assert.equal((await rowIn('installedaddons', 'Chess')).version, 'Version 1.2.0.71');
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});
