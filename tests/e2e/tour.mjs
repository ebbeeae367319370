// tour.mjs FOLDER: plays a short tour of the program on a fresh sample suite and a sample update
// source, and leaves numbered pictures and the error log in FOLDER.
import fs from 'node:fs';
import path from 'node:path';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { confirmMessage, eventually, isKitbay, picture, probe, Suite, windows, windowWhere } from './harness.mjs';

const folder = path.resolve(process.argv[2]);
fs.rmSync(folder, { recursive: true, force: true });
const source = await UpdateSource.start();
const manifest = source.misbehave('/ovalink.xml', 'stall');
const suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
suite.addSources(`${source.host}/closed.xml`);
const kitbay = suite.start();
let count = 0;
const show = async (what) => {
  const name = `${String((count += 1)).padStart(2, '0')}-${what.replaceAll(' ', '-')}`;
  console.log(await picture(name, folder));
};
const names = (container) => `#${container} > div > span > font:first-child`;
const tabs = [
  ['channels', 'channels'],
  ['trans', 'messaging services'],
  ['addons', 'addons'],
];

async function installed() {
  for (const [tab, kind] of tabs) {
    await kitbay.click(`#itabencloser #${tab}`);
    await show(`installed ${kind}`);
    await kitbay.click(names(`installed${tab === 'trans' ? 'transports' : tab}`), 1);
    await show(`one of the ${kind} with its description`);
  }
  await kitbay.click(names('installedaddons'), 0);
  await show('an addon that cannot be removed');
}

async function updates(page) {
  await kitbay.click(names('installedaddons'), 1);
  await show('an addon with an update');
  await kitbay.click('#update');
  await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
  for (const [tab, kind] of tabs) {
    await kitbay.click(`#tabencloser #${tab}`);
    await show(`new ${kind}`);
  }
}

async function download() {
  source.publish('/packages/scrapbook.zip', Buffer.alloc(300 * 1024));
  const drip = source.misbehave('/packages/scrapbook.zip', 'drip');
  await kitbay.click(names('updatedaddons'));
  await kitbay.click('#updatedaddons > div input');
  await drip.reached;
  await drip.next(100 * 1024);
  await eventually('progress', async () => {
    await drip.next(1024);
    return (await windows()).find(isKitbay).controls.some(({ value }) => value > 30);
  });
  await show('a download');
  await drip.rest();
}

try {
  const page = await kitbay.page();
  await page.waitFor(`document.getElementById('itabencloser')`);
  await manifest.reached;
  await page.settled();
  await show('asking a source');
  await installed();
  await manifest.rest();
  await windowWhere('the message of a source that fails', (window) => window.class === '#32770');
  await show('a source that fails');
  await confirmMessage();
  await page.waitFor(`!document.getElementById('update').disabled`);
  await updates(page);
  await download();
  await page.waitFor(`!document.querySelector('#updatedaddons input').disabled`);
  await probe('press', 'Kitbay', '&Close');
  await kitbay.ended();
  const log = path.join(folder, 'KitbayLog.log');
  fs.copyFileSync(suite.log, log);
  console.log(log);
} finally {
  await kitbay.dispose();
  await source.close();
}
