// One instance per user.
import assert from 'node:assert/strict';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { eventually, isKitbay, probe, Program, Suite, windows, windowWhere } from './harness.mjs';

const isClient = (window) => window.class === 'ThunderRT6FormDC';

let suite;
let kitbay;
let client;

before(async () => {
  suite = await Suite.layOut();
  kitbay = suite.start();
  await (await kitbay.page()).waitFor(`document.querySelector('#installedchannels > div')`);
});
after(async () => {
  await client?.dispose();
  await kitbay.dispose();
});

test('a second start raises the first window, shows no window of its own and ends', async () => {
  client = Program.start(path.join(suite.folder, 'Tessel.exe'));
  await windowWhere('the main client', isClient);
  await eventually('the main client above Kitbay', async () => {
    const order = (await windows()).filter((window) => isClient(window) || isKitbay(window));
    return order.length === 2 && isClient(order[0]);
  });
  const first = (await windows()).find(isKitbay);

  const second = suite.start();
  assert.equal(await second.ended(), 0);

  const order = (await windows()).filter((window) => isClient(window) || isKitbay(window));
  assert.deepEqual(order.map(isKitbay), [true, false]);
  assert.equal(order[0].process, first.process);
  assert.equal(order[0].topmost, false);
  assert.ok(kitbay.isRunning);
});

test('a second start restores the first window if it is minimised', async () => {
  await probe('minimize', 'Kitbay');
  await eventually('the minimised window', async () => (await windows()).find(isKitbay)?.minimized);
  assert.equal(await suite.start().ended(), 0);
  assert.equal((await windows()).find(isKitbay).minimized, false);
});

test('a second start writes nothing into the log of the first', () => {
  assert.deepEqual(suite.logEntries(), []);
});

test('another program finds the running manager and raises the window', async () => {
  assert.deepEqual(await probe('manager'), { BringToFront: null });
});

test('another program creates the registry object and registers the URL protocol', async () => {
  const answer = await probe('registry');
  assert.match(answer.GetAppDataPath, /^C:\\users\\.+\\AppData\\Roaming$/i);
  assert.notEqual(answer.ROOT_REGISTRY_KEY, 0);
  const text = (key, name = '') => probe('value', key, name);
  assert.deepEqual(await text('ovl'), { type: 1, text: 'URL:ovl Protocol' });
  assert.deepEqual(await text('ovl', 'URL Protocol'), { type: 1, text: '' });
  assert.deepEqual(await text('ovl\\DefaultIcon'), { type: 1, text: 'Kitbay.exe' });
  assert.deepEqual(await text('ovl\\shell\\open\\command'), {
    type: 1,
    text: `"${suite.windowsFolder}\\Kitbay\\Kitbay.exe" %1`,
  });
});
