// tour.mjs FOLDER: plays a short tour of the program on a fresh sample suite, and leaves numbered
// pictures and the error log in FOLDER.
import fs from 'node:fs';
import path from 'node:path';
import { picture, probe, Suite } from './harness.mjs';

const folder = path.resolve(process.argv[2]);
fs.rmSync(folder, { recursive: true, force: true });
const suite = await Suite.layOut();
const kitbay = suite.start();
let count = 0;
const show = async (what) => {
  const name = `${String((count += 1)).padStart(2, '0')}-${what.replaceAll(' ', '-')}`;
  console.log(await picture(name, folder));
};

try {
  const page = await kitbay.page();
  const rows = (container) => `document.querySelector('#${container} > div')`;
  const names = (container) => `#${container} > div > span > font:first-child`;
  for (const [tab, container, what] of [
    ['channels', 'installedchannels', 'installed channels'],
    ['trans', 'installedtransports', 'installed messaging services'],
    ['addons', 'installedaddons', 'installed addons'],
  ]) {
    await page.waitFor(`document.getElementById('itabencloser')`);
    await kitbay.click(`#itabencloser #${tab}`);
    await page.waitFor(rows(container));
    await page.settled();
    await show(what);
  }
  await kitbay.click(names('installedaddons'), 1);
  await show('an addon with its description');
  await kitbay.click(names('installedaddons'), 0);
  await show('an addon that cannot be removed');
  await kitbay.click('#update');
  await show('updates are off without an update source');
  await probe('press', 'Kitbay', '&Close');
  await kitbay.ended();
  const log = path.join(folder, 'KitbayLog.log');
  fs.copyFileSync(suite.log, log);
  console.log(log);
} finally {
  await kitbay.dispose();
}
