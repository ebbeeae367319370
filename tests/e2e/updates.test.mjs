// The update sources are contacted, and the page shows what they offer.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { afterEach, beforeEach, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  allButtonsOn,
  confirmMessage,
  eventually,
  isKitbay,
  picture,
  probe,
  rowsOf,
  sourcesAnswered,
  Suite,
  trustAuthority,
  windows,
  wine,
} from './harness.mjs';

const settingsKey = 'HKCU\\Software\\Ovalink';

let source;
let suite;
let kitbay;

beforeEach(async () => {
  source = await UpdateSource.start();
});
afterEach(async () => {
  await kitbay?.dispose();
  await source.close();
});

const updatesControl = `document.getElementById('category').childNodes[3]`;
const answered = sourcesAnswered;

/** Lays the suite out with `first` as the installation's source and `others` as the user's own. */
async function started(first, ...others) {
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: first });
  suite.addSources(...others);
  return restarted();
}

async function restarted() {
  kitbay = suite.start();
  return kitbay.page();
}

const summary = async (page, container) =>
  (await page.eval(rowsOf(container))).map(({ name, version, buttons }) => [name, version, ...buttons]);
const shown = (page, ...ids) =>
  page.eval(`${JSON.stringify(ids)}.filter((id) => document.getElementById(id).offsetParent !== null)`);

/** The value of the progress bar, out of 100. */
const progress = async () =>
  (await windows()).find(isKitbay).controls.find((control) => control.class === 'msctls_progress32').value;

async function closed() {
  await probe('press', 'Kitbay', '&Close');
  assert.equal(await kitbay.ended(), 0);
}

test('a source that answers gives Update buttons and a list of new components', async () => {
  const page = await started(`${source.host}/ovalink.xml`);
  await page.waitFor(answered);
  assert.deepEqual(suite.manifests(), ['ovalink.xml']);
  await kitbay.click('#itabencloser #addons');
  const addons = await summary(page, 'installedaddons');
  assert.deepEqual(
    addons.filter(([, , ...buttons]) => buttons.includes('Update')).map(([name, , ...buttons]) => [name, ...buttons]),
    [['Spell Checker', 'Update'], ['Übersetzer', 'Remove', 'Update'], ['Chess', 'Remove', 'Update']],
  );
  await kitbay.click('#installedaddons > div > span > font', 2);
  await picture('updates-installed-addons');
  await kitbay.click('#update');
  await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
  for (const [tab, container, names] of [
    ['addons', 'updatedaddons', ['Scrapbook']],
    ['trans', 'updatedtransports', null],
    ['channels', 'updatedchannels', null],
  ]) {
    await kitbay.click(`#tabencloser #${tab}`);
    assert.deepEqual(await shown(page, 'updatedaddons', 'updatedtransports', 'updatedchannels'), [container]);
    const rows = await summary(page, container);
    assert.ok(rows.length > 0, container);
    for (const [, , ...buttons] of rows) assert.deepEqual(buttons, ['Install']);
    if (names) assert.deepEqual(rows.map(([name]) => name), names);
    await picture(`updates-new-${tab}`);
  }
  await closed();
  assert.deepEqual(suite.logEntries(), []);
});

/** Dates a manifest that has just arrived so that the next start takes it for one of today, even after midnight. */
function keepFresh(name) {
  const file = path.join(suite.programFolder, name);
  assert.ok(Date.now() - fs.statSync(file).mtimeMs < 12 * 60 * 60 * 1000, 'it is of today');
  const tomorrow = new Date(Date.now() + 24 * 60 * 60 * 1000);
  fs.utimesSync(file, tomorrow, tomorrow);
}

test('a manifest of today is used again, one of yesterday is requested again', async () => {
  let page = await started(`${source.host}/ovalink.xml`);
  await page.waitFor(answered);
  await closed();
  assert.equal(source.requests.length, 1);
  keepFresh('ovalink.xml');

  page = await restarted();
  await page.waitFor(answered);
  await closed();
  assert.equal(source.requests.length, 1);

  const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
  fs.utimesSync(path.join(suite.programFolder, 'ovalink.xml'), yesterday, yesterday);
  page = await restarted();
  await page.waitFor(answered);
  await closed();
  assert.equal(source.requests.length, 2);
});

test('a source whose manifest has not changed since yesterday sends only a header', async (t) => {
  const careful = await UpdateSource.start({ validates: true });
  t.after(() => careful.close());
  let page = await started(`${careful.host}/ovalink.xml`);
  await page.waitFor(answered);
  await closed();
  const kept = path.join(suite.programFolder, 'ovalink.xml');
  const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
  fs.utimesSync(kept, yesterday, yesterday);

  page = await restarted();
  await page.waitFor(answered);
  await kitbay.click('#itabencloser #addons');
  assert.equal(await page.eval(`document.querySelectorAll('#installedaddons input[value=Update]').length`), 3);
  await closed();
  assert.deepEqual(careful.requests.map(({ status }) => status), [200, 304]);
  assert.deepEqual(fs.readFileSync(kept), careful.contentOf('/ovalink.xml'));

  // The manifest counts as one of today.
  keepFresh('ovalink.xml');
  page = await restarted();
  await page.waitFor(answered);
  await closed();
  assert.equal(careful.requests.length, 2);
  assert.deepEqual(suite.manifests(), ['ovalink.xml']);
  assert.deepEqual(suite.logEntries(), []);
});

test('a package whose transfer broke off is resumed after the program was restarted', async (t) => {
  const careful = await UpdateSource.start({ validates: true });
  t.after(() => careful.close());
  const asked = '/packages/scrapbook.zip';
  const install = async (page) => {
    await page.waitFor(answered);
    await kitbay.click('#itabencloser #addons');
    await kitbay.click('#update');
    await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
    await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  };
  const page = await started(`${careful.host}/ovalink.xml`);
  const { length } = careful.contentOf(asked);
  careful.misbehave(asked, 'validated-cut-short', { after: 1000 });
  await install(page);
  const told = `//${careful.host}${asked}      The answer was cut short: 1000 of ${length} bytes`;
  assert.equal(await confirmMessage(), told);
  await page.waitFor(allButtonsOn);
  await closed();
  assert.equal(fs.existsSync(suite.workingFolder), false);

  careful.behave();
  await install(await restarted());
  assert.match(await confirmMessage(), /^Scrapbook addon has been successfully installed\./);
  const { headers, status } = careful.requests.at(-1);
  assert.deepEqual([headers.range, status], ['bytes=1000-', 206]);
  assert.deepEqual(fs.readFileSync(path.join(suite.workingFolder, 'scrapbook.zip')), careful.contentOf(asked));
  await closed();
});

test('a failing source is reported once and the next one is contacted', async () => {
  source.misbehave('/ovalink.xml', '404');
  const page = await started(`${source.host}/ovalink.xml`, `${source.host}/partners.xml`);
  const text = await confirmMessage();
  assert.match(text, /^\/ovalink\.xml {6}.*404/);
  await page.waitFor(answered);
  assert.deepEqual(suite.manifests(), ['partners.xml']);
  await closed();
  const entries = suite.logEntries().map(({ number, procedure }) => [number, procedure]);
  assert.deepEqual(entries, [[0, 'Kitbay::OvTransportEvents_Exception']]);
});

test('a source that fails leaves the answer of one that was contacted today', async () => {
  const page = await started(`${source.host}/ovalink.xml`, `${source.host}/missing.xml`);
  await confirmMessage();
  await page.waitFor(answered);
  await closed();
  source.requests.length = 0;
  const again = await restarted();
  await confirmMessage();
  await again.waitFor(answered);
  assert.deepEqual(source.requests.map((request) => request.path), ['/missing.xml']);
  await kitbay.click('#itabencloser #addons');
  assert.equal(await again.eval(`document.querySelectorAll('#installedaddons input[value=Update]').length`), 3);
  await closed();
});

test('Close in the middle of a transfer ends the program and leaves no part of the file', async () => {
  const held = source.misbehave('/ovalink.xml', 'stall-body', { after: 100 });
  await started(`${source.host}/ovalink.xml`);
  await held.reached;
  await closed();
  assert.deepEqual(suite.manifests(), []);
  assert.deepEqual(suite.logEntries(), []);
});

for (const [mode, reason] of [
  ['too-much', 'The server sent more than the 500 bytes it announced'],
  ['too-much-later', 'The server\'s answer is not a list of components'],
]) test(`"${mode}" is a failed source, is never kept, and the page can be used`, async () => {
  source.misbehave('/ovalink.xml', mode, { announced: 500 });
  const page = await started(`${source.host}/ovalink.xml`);
  assert.equal(await confirmMessage(), `/ovalink.xml      ${reason}`);
  await eventually('the folder of manifests without part of one', () => suite.manifests().length === 0);
  await kitbay.click('#itabencloser #addons');
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
  await closed();
  assert.deepEqual(
    suite.logEntries().map(({ procedure }) => procedure),
    ['Kitbay::OvTransportEvents_Exception'],
  );
});

for (const [mode, options] of [
  ['refuse'],
  ['cut-short', { after: 100 }],
  ['500'],
  ['redirect', { to: 'http://localhost:9/elsewhere.xml' }],
  ['redirect-loop'],
]) {
  test(`"${mode}" ends in a message, nothing half-written, and the next source's manifest`, async () => {
    source.misbehave('/ovalink.xml', mode, options);
    const page = await started(`${source.host}/ovalink.xml`, `${source.host}/partners.xml`);
    assert.match(await confirmMessage(), /^\/ovalink\.xml {6}\w/);
    await page.waitFor(answered);
    assert.deepEqual(suite.manifests(), ['partners.xml']);
    const kept = fs.readFileSync(path.join(suite.programFolder, 'partners.xml'));
    assert.deepEqual(kept, source.contentOf('/partners.xml'));
    assert.equal(source.requests.filter((request) => request.path === '/partners.xml').length, 1);
    await kitbay.click('#itabencloser #addons');
    await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
    await closed();
    assert.deepEqual(
      suite.logEntries().map(({ procedure }) => procedure),
      ['Kitbay::OvTransportEvents_Exception'],
    );
  });
}

test('a single source that fails leaves a page that can be used', async () => {
  source.misbehave('/ovalink.xml', 'cut-short', { after: 100 });
  const page = await started(`${source.host}/ovalink.xml`);
  assert.match(await confirmMessage(), /^\/ovalink\.xml {6}\w/);
  await eventually('the folder of manifests without part of one', () => suite.manifests().length === 0);
  await kitbay.click('#itabencloser #addons');
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
  assert.equal(await page.eval(`${updatesControl}.disabled`), true);
  await closed();
  assert.deepEqual(
    suite.logEntries().map(({ procedure }) => procedure),
    ['Kitbay::OvTransportEvents_Exception'],
  );
});

/** The manifest of `from` is kept as it was sent, nothing is logged, and updates are offered. */
async function keptManifest(page, from) {
  await page.waitFor(answered);
  const kept = fs.readFileSync(path.join(suite.programFolder, 'ovalink.xml'));
  assert.deepEqual(kept, from.contentOf('/ovalink.xml'));
  assert.deepEqual(suite.manifests(), ['ovalink.xml']);
  await kitbay.click('#itabencloser #addons');
  assert.equal(await page.eval(`document.querySelectorAll('#installedaddons input[value=Update]').length`), 3);
}

for (const mode of ['chunked', 'no-length']) {
  test(`a manifest without an announced length ("${mode}") is kept whole`, async () => {
    source.misbehave('/ovalink.xml', mode);
    await keptManifest(await started(`${source.host}/ovalink.xml`), source);
    await closed();
    assert.deepEqual(suite.logEntries(), []);
  });
}

test('a manifest that drips shows its progress and is kept whole', async () => {
  const drip = source.misbehave('/ovalink.xml', 'drip');
  const page = await started(`${source.host}/ovalink.xml`);
  await drip.reached;
  await eventually('progress', async () => {
    await drip.next(100);
    return (await progress()) > 0;
  });
  assert.ok((await progress()) < 100);
  assert.deepEqual(suite.manifests().filter((name) => name === 'ovalink.xml'), []);
  await drip.rest();
  await keptManifest(page, source);
  await closed();
  assert.deepEqual(suite.logEntries(), []);
});

test('a source with TLS is contacted, and delivers a package', async (t) => {
  await trustAuthority();
  const secure = await UpdateSource.start({ tls: 'good' });
  t.after(() => secure.close());
  const page = await started(`${secure.origin}/ovalink.xml`);
  await keptManifest(page, secure);
  await kitbay.click('#update');
  await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  assert.match(await confirmMessage(), /^Scrapbook addon has been successfully installed\./);
  const arrived = fs.readFileSync(path.join(suite.workingFolder, 'scrapbook.zip'));
  assert.deepEqual(arrived, secure.contentOf('/packages/scrapbook.zip'));
  await closed();
  assert.deepEqual(suite.logEntries(), []);
  assert.deepEqual(source.requests, []);
});

for (const mode of ['stall', 'stall-body']) {
  test(`"${mode}" ends with only the time-out as message`, async () => {
    await wine('reg', 'add', settingsKey, '/v', 'TransferTimeout', '/d', '1', '/f');
    try {
      source.misbehave('/ovalink.xml', mode);
      await started(`${source.host}/ovalink.xml`, `${source.host}/partners.xml`);
      assert.equal(await confirmMessage(), 'connection timed out');
      await (await kitbay.page()).waitFor(answered);
      assert.deepEqual(suite.manifests(), ['partners.xml']);
      await closed();
    } finally {
      await wine('reg', 'delete', settingsKey, '/v', 'TransferTimeout', '/f');
    }
  });
}

for (const [mode, reason] of [
  ['login-page', 'The server\'s answer is not a list of components'],
  ['empty', 'The server\'s answer is not a list of components'],
  ['zeros', 'The server\'s list of components is larger than 64 MB'],
]) {
  test(`"${mode}" in place of a manifest is a failed source, and yesterday's list stays`, async () => {
    const { host } = source;
    let page = await started(`${host}/ovalink.xml`, `${host}/partners.xml`);
    await page.waitFor(answered);
    const offers = async () => {
      await kitbay.click('#itabencloser #addons');
      return summary(page, 'installedaddons');
    };
    const offered = await offers();
    assert.ok(offered.some((row) => row.includes('Update')));
    await closed();
    const kept = path.join(suite.programFolder, 'ovalink.xml');
    const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
    for (const name of suite.manifests()) fs.utimesSync(path.join(suite.programFolder, name), yesterday, yesterday);

    source.misbehave('/ovalink.xml', mode);
    page = await restarted();
    assert.equal(await confirmMessage(), `/ovalink.xml      ${reason}`);
    await page.waitFor(answered);
    assert.deepEqual(suite.manifests(), ['ovalink.xml', 'partners.xml']);
    assert.deepEqual(fs.readFileSync(kept), source.contentOf('/ovalink.xml'));
    assert.deepEqual(await offers(), offered);
    await closed();
    assert.deepEqual(
      suite.logEntries().map(({ number, procedure, description }) => [number, procedure, description]),
      [[0, 'Kitbay::OvTransportEvents_Exception', reason]],
    );

    // It is contacted again at the next start on the same day.
    source.behave();
    source.requests.length = 0;
    page = await restarted();
    await page.waitFor(answered);
    assert.deepEqual(source.requests.map((request) => request.path), ['/ovalink.xml']);
    await closed();
    assert.deepEqual(suite.manifests(), ['ovalink.xml', 'partners.xml']);
  });
}

test('"login-page" in place of the first manifest leaves no file and a page that can be used', async () => {
  source.misbehave('/ovalink.xml', 'login-page');
  const page = await started(`${source.host}/ovalink.xml`);
  assert.match(await confirmMessage(), /^\/ovalink\.xml {6}The server's answer is not a list of components$/);
  await kitbay.click('#itabencloser #addons');
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
  assert.deepEqual(suite.manifests(), []);
  await closed();
});

test('switching categories and tabs keeps the selected kind', async () => {
  const page = await started(`${source.host}/ovalink.xml`);
  await page.waitFor(answered);
  await kitbay.click('#itabencloser #trans');
  await kitbay.click('#update');
  const lists = ['installedaddons', 'installedtransports', 'installedchannels'].flatMap((id) => [
    id,
    id.replace('installed', 'updated'),
  ]);
  await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
  assert.deepEqual(await shown(page, ...lists), ['updatedtransports']);
  await kitbay.click('#tabencloser #addons');
  await kitbay.click('#installed');
  await page.waitFor(`document.getElementById('itabencloser').offsetParent !== null`);
  assert.deepEqual(await shown(page, ...lists), ['installedaddons']);
  await closed();
  assert.deepEqual(suite.logEntries(), []);
});

test('a download shows its progress and disables the other buttons', async () => {
  const page = await started(`${source.host}/ovalink.xml`);
  await page.waitFor(answered);
  const drip = source.misbehave('/packages/scrapbook.zip', 'drip');
  await kitbay.click('#itabencloser #addons');
  await kitbay.click('#update');
  await page.waitFor(`document.getElementById('tabencloser').offsetParent !== null`);
  await kitbay.press('updatedaddons', 'Scrapbook', 'Install');
  await drip.reached;
  await eventually('progress', async () => {
    await drip.next(1024);
    return (await progress()) > 0;
  });
  assert.ok((await progress()) < 100);
  assert.equal(await page.eval(`document.querySelector('#updatedaddons input').disabled`), true);
  const asked = source.requests.length;
  await kitbay.click('#updatedaddons > div input');
  assert.equal(source.requests.length, asked);
  await picture('updates-download');
  await drip.rest();
  assert.match(await confirmMessage(), /^Scrapbook addon has been successfully installed\./);
  const arrived = fs.readFileSync(path.join(suite.workingFolder, 'scrapbook.zip'));
  assert.deepEqual(arrived, source.contentOf('/packages/scrapbook.zip'));
  await page.waitFor(allButtonsOn);
  assert.equal(await progress(), 100);
  await closed();
});
