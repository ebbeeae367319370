// What the program does about the state of the suite's installation.
import assert from 'node:assert/strict';
import { once } from 'node:events';
import fs from 'node:fs';
import net from 'node:net';
import path from 'node:path';
import { afterEach, test } from 'node:test';
import { isKitbay, probe, rowsOf, Suite, windows, windowWhere } from './harness.mjs';

let kitbay;
afterEach(() => kitbay?.dispose());

const channelsShown = `document.querySelectorAll('#installedchannels > div').length`;

/** Starts the program on a suite whose datastore the test has prepared, and waits for the page. */
async function startedOn(suite, shown = `(document.getElementById('imgtab')?.innerHTML ?? '') !== ''`) {
  kitbay = suite.start();
  const page = await kitbay.page();
  await page.waitFor(shown);
  return page;
}

async function closed() {
  await probe('press', 'Kitbay', '&Close');
  assert.equal(await kitbay.ended(), 0);
}

test('without an uninstall entry the user is told, with "Application" in both places', async () => {
  const suite = await Suite.layOut();
  await suite.deleteUninstallEntry('Tessel');
  kitbay = suite.start();
  const box = await windowWhere('the message', (window) => window.class === '#32770');
  assert.equal(box.caption, 'Kitbay');
  const texts = box.controls.map((control) => control.text);
  assert.ok(
    texts.includes(
      'Kitbay has detected that Application has not been installed properly. Please reinstall Application.',
    ),
    texts.join('|'),
  );
  assert.equal(box.controls.filter((control) => control.class === 'Button').length, 1);
  await probe('answer', String(box.id), 'OK');
  assert.equal(await kitbay.ended(), 0);
  assert.equal((await windows()).find(isKitbay), undefined);
  assert.equal(fs.existsSync(suite.log), false);
});

test('install.txt names another uninstall entry', async () => {
  const suite = await Suite.layOut();
  await suite.deleteUninstallEntry('Tessel');
  await suite.setUninstallEntry('Tessel Büro', {
    InstallLocation: suite.windowsFolder,
    Displayname: 'Tessel Büro',
  });
  suite.write('Kitbay/install.txt', 'entry\r\nTessel Büro\r\n');
  await startedOn(suite, `${channelsShown} === 6`);
  await closed();
  await suite.deleteUninstallEntry('Tessel Büro');
});

test('a log that cannot be created does not keep the program from running', async () => {
  const suite = await Suite.layOut();
  fs.mkdirSync(suite.log);
  suite.write('Temp', 'a file where the working folder belongs');
  await startedOn(suite, `${channelsShown} === 6`);
  assert.ok((await windows()).some(isKitbay));
  await closed();
  assert.ok(fs.statSync(suite.log).isDirectory());
});

test('an installation folder that nothing can be written to still gives a running program', async () => {
  const suite = await Suite.layOut();
  await suite.setUninstallEntry('Tessel', { InstallLocation: 'Z:\\proc' });
  await startedOn(suite);
  assert.ok((await windows()).some(isKitbay));
  await closed();
});

test('a missing datastore is logged and leaves an empty list', async () => {
  const suite = await Suite.layOut();
  fs.rmSync(suite.datastore);
  const page = await startedOn(suite);
  assert.equal(await page.eval(channelsShown), 0);
  await closed();
  const [{ number, procedure }, ...others] = suite.logEntries();
  assert.deepEqual([number, procedure, others], [53, 'Kitbay::InitialInstalledChannels', []]);
});

test('a datastore that is cut off is logged and leaves an empty list', async () => {
  const suite = await Suite.layOut();
  const whole = fs.readFileSync(suite.datastore);
  fs.writeFileSync(suite.datastore, whole.subarray(0, whole.length / 2));
  const page = await startedOn(suite);
  assert.equal(await page.eval(channelsShown), 0);
  await closed();
  const [{ number, procedure, description }, ...others] = suite.logEntries();
  assert.deepEqual([number, procedure, others], [-2147024883, 'Kitbay::InitialInstalledChannels', []]);
  assert.match(description, /olregistry\.xml/);
});

test('markup in names appears, but runs nothing and fetches nothing', async (t) => {
  const suite = await Suite.layOut();
  let connections = 0;
  const server = net.createServer(() => (connections += 1));
  server.listen(0, '127.0.0.1');
  await once(server, 'listening');
  t.after(() => server.close());
  const elsewhere = `http://127.0.0.1:${server.address().port}`;
  const hostile = [
    '<b>bold</b>',
    '<script>document.title="run"</script>script',
    `<iframe src="${elsewhere}/frame"></iframe>frame`,
    `<img src="${elsewhere}/image.gif" onerror="document.title='run'">image`,
    '<a href="javascript:document.title=\'run\'">link</a>',
  ];
  const escaped = hostile.map((name) =>
    name.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('"', '&quot;'),
  );
  suite.write(
    'Datastore/olregistry.xml',
    `<root><addons/><transports/><channels>${escaped
      .map(
        (name, i) =>
          `<channel id="c${i}" name="${name}" version="1"><description>${name}</description><core>0</core></channel>`,
      )
      .join('')}</channels></root>`,
  );
  const page = await startedOn(suite, `${channelsShown} === ${hostile.length + 3}`);
  const rows = await page.eval(rowsOf('installedchannels'));
  assert.deepEqual(
    rows.slice(0, hostile.length).map((row) => row.name.trim()),
    ['bold', 'script', 'frame', 'image', 'link'],
  );
  assert.equal(await page.eval(`document.querySelectorAll('#installedchannels b').length`), 2);
  await kitbay.click('#installedchannels a');
  // An image that the test adds fails after those of the page, whose handlers have then run.
  const failed = `new Promise((resolve) => {
    const image = new Image();
    image.addEventListener('error', () => resolve(image.complete));
    image.src = '${elsewhere}/last.gif';
  })`;
  assert.equal(await page.eval(failed), true);
  assert.equal(await page.eval('document.title'), 'Kitbay');
  assert.equal(connections, 0);
  await closed();
  assert.deepEqual(suite.logEntries(), []);
});

test('a datastore of 50 MB is listed', async () => {
  const suite = await Suite.layOut();
  const text = fs.readFileSync(suite.datastore, 'utf8');
  const filler = `<!-- ${'x'.repeat(1000)} -->\n`.repeat(50000);
  fs.writeFileSync(suite.datastore, text.replace('</root>', `${filler}</root>`));
  await startedOn(suite, `${channelsShown} === 6`);
  await closed();
});

test('the datastore is unchanged, byte for byte', async () => {
  const suite = await Suite.layOut();
  const before = fs.readFileSync(suite.datastore);
  await startedOn(suite, `${channelsShown} === 6`);
  await closed();
  assert.deepEqual(fs.readFileSync(suite.datastore), before);
  assert.deepEqual(fs.readdirSync(path.dirname(suite.datastore)), ['olregistry.xml']);
});
