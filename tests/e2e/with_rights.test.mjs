// A user with an administrator's rights: the user's classes are not found, none of the suite's
// objects is registered, and everything that Kitbay does still works.
import assert from 'node:assert/strict';
import path from 'node:path';
import { test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { withRights } from './worlds.mjs';

withRights();
const { confirmMessage, eventually, isKitbay, MainClient, probe, Program, rowsOf } = await import('./harness.mjs');
const { root, run, starter, Suite, wine, windows } = await import('./harness.mjs');
// The short way through, from the start to the end.
await import('./short_way.test.mjs');

const query = (key) => wine('reg', 'query', key);
const kObject = 'Software\\Classes\\URLDownloadLib.URLDownload';

test('no object of the suite is registered', async () => {
  await assert.rejects(query(`HKLM\\${kObject}`), { code: 1 });
  await assert.rejects(query(`HKCU\\${kObject}`), { code: 1 });
});

test('an installed library has registered itself for the machine', async () => {
  assert.match(await query('HKLM\\Software\\Classes\\OvlScrapbook.Book\\CLSID'), /\{[-0-9A-F]+\}/);
  await assert.rejects(query('HKCU\\Software\\Classes\\OvlScrapbook.Book'), { code: 1 });
});

test("Kitbay's classes are the machine's, and a second start raises the window", async () => {
  const suite = await Suite.layOut();
  const kitbay = suite.start();
  try {
    const page = await kitbay.page();
    await page.waitFor(`document.querySelector('#installedchannels > div')`);
    await query('HKLM\\Software\\Classes\\Kitbay.Manager\\CLSID');
    await assert.rejects(query('HKCU\\Software\\Classes\\Kitbay.Manager'), { code: 1 });
    await probe('minimize', 'Kitbay');
    await eventually('the minimised window', async () => (await windows()).find(isKitbay)?.minimized);
    const second = suite.start();
    assert.equal(await second.ended(), 0);
    await second.dispose();
    assert.equal((await windows()).find(isKitbay).minimized, false);
    assert.deepEqual((await page.eval(rowsOf('installedchannels'))).length, 6);
    assert.equal(await kitbay.close(), 0);
    assert.deepEqual(suite.logEntries(), []);
  } finally {
    await kitbay.dispose();
  }
});

for (const [second, first] of [['with', 'without'], ['without', 'with']]) {
  test(`a start ${second} the rights ends if Kitbay runs ${first} them, and leaves one window`, async () => {
    const suite = await Suite.layOut();
    const kitbayWith = () => suite.start();
    const kitbayWithout = () => Program.start(starter, '--limited', `${suite.windowsFolder}\\Kitbay\\Kitbay.exe`);
    const [startFirst, startSecond] = first === 'with' ? [kitbayWith, kitbayWithout] : [kitbayWithout, kitbayWith];
    const kitbay = startFirst();
    try {
      const page = await kitbay.page();
      await page.waitFor(`document.querySelector('#installedchannels > div')`);
      const later = startSecond();
      await later.ended();
      await later.dispose();
      const elevated = (await probe('programs', 'Kitbay.exe')).map((program) => program.elevated);
      assert.deepEqual(elevated, [first === 'with']);
      assert.equal((await windows()).filter(isKitbay).length, 1);
      await kitbay.close();
      assert.deepEqual(suite.logEntries(), []);
    } finally {
      await kitbay.dispose();
      // The instance without the rights has registered its classes for the user.
      await wine('reg', 'delete', 'HKCU\\Software\\Classes\\Kitbay.Manager', '/f').catch(() => {});
    }
  });
}

test('the main client is started again by the desktop of its user, without the rights', async () => {
  const source = await UpdateSource.start();
  const suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  const client = new MainClient(suite);
  // Wine gives the desktop to whoever looks at it first, for as long as it runs.
  await run(path.join(root, 'tools/wine_prefix'), ['--stop']);
  const user = Program.start(starter, '--limited', `${suite.windowsFolder}\\Tessel.exe`);
  await client.event(1, 'the start of the main client');
  const kitbay = suite.start();
  try {
    const page = await kitbay.answeredPage();
    await kitbay.press('installedchannels', 'Presence', 'Update');
    await confirmMessage();
    await client.event(3, 'the restart of the main client');
    const rights = async (name) => (await probe('programs', name)).map(({ id, ...rest }) => rest);
    assert.deepEqual(await rights('Tessel.exe'), [{ parent: 'explorer.exe', elevated: false }]);
    assert.deepEqual((await rights('Kitbay.exe')).map(({ elevated }) => elevated), [true]);
    assert.equal(await kitbay.close(), 0);
  } finally {
    await kitbay.dispose();
    await client.close();
    await user.dispose();
    await source.close();
  }
});

test('an uninstall entry that refuses writing is read', async () => {
  const suite = await Suite.layOut();
  await probe('refuse', 'SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tessel');
  const kitbay = suite.start();
  try {
    const page = await kitbay.page();
    await page.waitFor(`document.querySelector('#installedchannels > div')`);
    assert.equal(await kitbay.close(), 0);
    assert.deepEqual(suite.logEntries(), []);
  } finally {
    await kitbay.dispose();
  }
});
