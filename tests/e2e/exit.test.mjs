// How the program ends.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { afterEach, beforeEach, test } from 'node:test';
import { isKitbay, probe, Program, starter, Suite, windows } from './harness.mjs';

let suite;
let kitbay;
let page;

beforeEach(async () => {
  suite = await Suite.layOut();
  kitbay = suite.start();
  page = await kitbay.page();
  await page.waitFor(`document.querySelector('#installedchannels > div')`);
});
afterEach(() => kitbay.dispose());

const working = () => path.join(suite.folder, 'Temp');

async function endedCleanly() {
  assert.equal(await kitbay.ended(), 0);
  assert.equal((await windows()).find(isKitbay), undefined);
  assert.equal(fs.existsSync(working()), false);
  assert.deepEqual(suite.logEntries(), []);
}

test('Close ends the program and deletes the working folder with everything in it', async () => {
  assert.ok(fs.statSync(working()).isDirectory());
  suite.write('Temp/package/part.zip', 'half a package');
  await probe('press', 'Kitbay', '&Close');
  await endedCleanly();
});

test('Escape ends the program while the page has the focus', async () => {
  await kitbay.click('#installedchannels > div > span > font');
  await probe('key', 'Kitbay', '0x1B');
  await endedCleanly();
});

test('every other key is left to the page and its controls', async () => {
  await kitbay.click('#installedchannels > div > span > font');
  await page.eval(`void addEventListener('keydown', ({ keyCode }) => (globalThis.lastKey = keyCode))`);
  await kitbay.key('0x41');
  assert.equal(await page.eval('lastKey'), 0x41);
  assert.ok(kitbay.isRunning);
});

test('each start begins a new log', async () => {
  const first = fs.readFileSync(suite.log, 'utf8');
  assert.match(first, /^Log Date :\d+\/\d+\/\d{4} \d+:\d\d:\d\d [AP]M\r\n$/);
  await probe('press', 'Kitbay', '&Close');
  await endedCleanly();
  fs.appendFileSync(suite.log, 'left over\r\n');
  kitbay = suite.start();
  await (await kitbay.page()).waitFor(`document.querySelector('#installedchannels > div')`);
  assert.doesNotMatch(fs.readFileSync(suite.log, 'utf8'), /left over/);
});

test('a read-only file in the working folder is logged and does not keep the program alive', async () => {
  suite.write('Temp/kept.txt', 'kept');
  fs.chmodSync(path.join(working(), 'kept.txt'), 0o444);
  await probe('press', 'Kitbay', '&Close');
  assert.equal(await kitbay.ended(), 0);
  assert.ok(fs.existsSync(path.join(working(), 'kept.txt')));
  const entries = suite.logEntries().map(({ number, procedure }) => [number, procedure]);
  assert.deepEqual(entries, [[70, 'Kitbay::Form_Unload']]);
});

test('a call that arrives during the end does not show the window again', async () => {
  await probe('press', 'Kitbay', '&Close');
  await endedCleanly();
  kitbay = Program.start(starter, '--with', 'late_call.dll', `${suite.windowsFolder}\\Kitbay\\Kitbay.exe`);
  await (await kitbay.page()).waitFor(`document.querySelector('#installedchannels > div')`);
  // The method ends with an exception, because it is cut off from the program.
  assert.deepEqual(await probe('late'), { BringToFront: 'Invoke: 0x80020009' });
  assert.equal(await kitbay.ended(), 1, 'one process');
  assert.equal((await windows()).find(isKitbay), undefined);
  assert.deepEqual(suite.logEntries(), []);
});
