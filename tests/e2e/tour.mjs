// tour.mjs FOLDER: plays the program's story on a fresh sample suite and a sample update source:
// what is installed, a source that fails, the list of sources, an update with the main client
// running, an installation and a removal. Leaves numbered pictures and the error log in FOLDER.
import fs from 'node:fs';
import path from 'node:path';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  confirmMessage,
  eventually,
  isKitbay,
  MainClient,
  messages,
  patience,
  picture,
  probe,
  sourcesAnswered,
  Suite,
  windows,
  windowWhere,
} from './harness.mjs';

const folder = path.resolve(process.argv[2]);
fs.rmSync(folder, { recursive: true, force: true });
const source = await UpdateSource.start();
const manifest = source.misbehave('/ovalink.xml', 'stall');
const suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
suite.addSources(`${source.host}/closed.xml`);
const client = new MainClient(suite);
await client.start();
const kitbay = suite.start();
let page;

let count = 0;
const show = async (what) => {
  await page.eval('true'); // The window then shows the current page, under whatever is open.
  const name = `${String((count += 1)).padStart(2, '0')}-${what.replaceAll(' ', '-')}`;
  console.log(await picture(name, folder));
};
const showMessage = async (what) => {
  await eventually(what, async () => (await messages()).length > 0);
  await show(what);
};
const names = (container) => `#${container} > div > span > font:first-child`;

async function installed() {
  await page.waitFor(`document.getElementById('itabencloser')`);
  await manifest.reached;
  await kitbay.click(names('installedchannels'), 1);
  await show('installed channels while a source is asked');
  await kitbay.click('#itabencloser #trans');
  await show('installed messaging services');
  await kitbay.click('#itabencloser #addons');
  await kitbay.click(names('installedaddons'), 1);
  await show('installed addons');
}

async function sourceThatFails() {
  await manifest.rest();
  await showMessage('a source that fails');
  await confirmMessage();
  await page.waitFor(sourcesAnswered);
}

async function updateSources() {
  await probe('press', 'Kitbay', '&Directories');
  const isDialog = (window) => window.class === 'KitbayPreferenceWindow';
  const { caption } = await windowWhere('the dialog', isDialog);
  await show('the update sources');
  await probe('press', caption, '&Close');
  await eventually('the end of the dialog', async () => !(await windows()).some(isDialog));
}

async function update() {
  const held = source.misbehave('/packages/chess.zip', 'drip');
  await kitbay.show('installed', 'addons');
  await kitbay.press('installedaddons', 'Chess', 'Update');
  await showMessage('the question before an update');
  await confirmMessage();
  await held.reached;
  await client.event(2, 'the end of the main client');
  // Progress shows after some more bytes, and the last of the 84 kB must wait for the picture.
  const hasProgress = async () => (await windows()).find(isKitbay).controls.some(({ value }) => value > 30);
  await held.next(40 * 1024);
  await eventually('progress', async () => (await hasProgress()) || (await held.next(1024)));
  await show('a download while the main client is closed');
  await held.rest();
  await client.event(3, 'the restart of the main client');
  await page.waitFor(allButtonsOn);
  await kitbay.show('installed', 'addons');
  await kitbay.click(names('installedaddons'), 8);
  await show('the new version and the main client again');
}

async function installation() {
  await kitbay.show('update', 'trans');
  await show('new messaging services');
  await kitbay.click('#tabencloser #channels');
  await show('new channels');
  await kitbay.click('#tabencloser #addons');
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  await showMessage('a new addon has been installed');
  await confirmMessage();
  await page.waitFor(allButtonsOn);
  await kitbay.show('installed', 'addons');
  await kitbay.click(names('installedaddons'), 10);
  await page.eval(`installedaddons.lastElementChild.scrollIntoView()`);
  await page.settled();
  await show('the new addon among the installed ones');
}

async function removal() {
  await kitbay.press('installedaddons', 'Voice Notes', 'Remove');
  await showMessage('the question before a removal');
  await confirmMessage();
  await page.waitFor(`!installedaddons.innerText.includes('Voice Notes')`);
  await show('the addon is gone and the main client closed');
}

try {
  page = await kitbay.page();
  for (const part of [installed, sourceThatFails, updateSources, update, installation, removal]) {
    patience.begin();
    await part();
  }
  await kitbay.close();
  const log = path.join(folder, 'KitbayLog.log');
  fs.copyFileSync(suite.log, log);
  console.log(log);
} finally {
  await kitbay.dispose();
  await client.close();
  await source.close();
}
