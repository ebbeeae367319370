// Lists of hundreds and thousands of components.
//
// The tests compare counts and processor time, which a busy machine does not change. Each part of a long list has
// the whole time limit of a test again.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { afterEach, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { patience, run, sourcesAnswered, Suite } from './harness.mjs';

const kPart = 500;

let source;
let suite;
let kitbay;

afterEach(async () => {
  patience.begin();
  await kitbay?.dispose();
  await source?.close();
  kitbay = undefined;
  source = undefined;
});

const numbered = (count, text) => Array.from({ length: count }, (_, i) => text(i + 1)).join('');

/** A suite with `count` channels and nothing else. */
async function suiteOf(count, settings = {}) {
  suite = await Suite.layOut(settings);
  fs.writeFileSync(suite.datastore, `<root><addons/><transports/><channels>${numbered(count, (i) =>
    `<channel id="c${i}" name="Channel ${i}" version="1.0"><description>Tells ${i}.</description><core>0</core></channel>`,
  )}</channels></root>`);
  fs.rmSync(suite.customRegistry, { force: true });
}

/** A manifest that offers an update for each of `count` channels, and as many new ones. */
const manifestFor = (count) => `<components><channels>${numbered(count, (i) =>
  ['c', 'n'].map((id) =>
    `<channel id="${id}${i}"><name>Channel ${id}${i}</name><version>1.5</version><description>Tells ${i}.</description>` +
    `<url>@ORIGIN@/packages/many.zip</url></channel>`).join(''),
)}</channels></components>`;

/** Waits until that many channels are listed. */
async function listed(page, count, list = 'installedchannels') {
  for (let rows = Math.min(kPart, count); ; rows = Math.min(rows + kPart, count)) {
    patience.begin();
    await page.waitFor(`document.getElementById('${list}').childElementCount > ${rows}`);
    if (rows === count) break;
  }
  patience.begin();
  await page.settled();
}

test('a refresh while a download runs takes at most ten calls into the page per row', async () => {
  const count = 250;
  source = await UpdateSource.start();
  source.publish('/many.xml', manifestFor(count));
  source.publish('/packages/many.zip', 'never sent');
  await suiteOf(count, { KITBAY_UPDATE_SOURCE: `${source.host}/many.xml` });
  const held = source.misbehave('/packages/many.zip', 'stall');
  kitbay = suite.start();
  const page = await kitbay.page();
  await page.waitFor(sourcesAnswered);
  await page.settled();
  await kitbay.show('update', 'channels');
  await kitbay.press('updatedchannels', 'Channel n3', 'Install');
  await held.reached;
  await page.settled();

  const before = await page.calls();
  await kitbay.click('#update');
  const after = await page.calls();
  assert.equal(await page.eval('updatedchannels.childElementCount'), count + 1);
  assert.equal(await page.eval(`updatedchannels.querySelectorAll('input:disabled').length`), count);
  const calls = after.total - before.total;
  // The lists that are not shown have buttons too.
  const rows = 2 * count;
  assert.ok(calls > 2 * rows && calls <= 10 * rows, `${calls} calls: ${JSON.stringify(after.members)}`);
});

/** What listing `count` channels takes: calls into the page, and seconds of processor time. */
async function listingOf(count) {
  await suiteOf(count);
  kitbay = suite.start();
  const page = await kitbay.page();
  await page.waitFor(`document.getElementById('itabencloser')`);
  const [calls, seconds] = [await page.calls(), kitbay.processorSeconds()];
  await listed(page, count);
  return { calls: (await page.calls()).total - calls.total, seconds: kitbay.processorSeconds() - seconds };
}

test('5 000 rows take at most 11 times as long as 500, and answer the mouse', async (t) => {
  const few = await listingOf(500);
  await kitbay.dispose();
  const many = await listingOf(5000);
  t.diagnostic(`500 rows: ${JSON.stringify(few)}, 5 000 rows: ${JSON.stringify(many)}`);
  assert.ok(few.calls > 500 && few.calls <= 10 * 500, `${few.calls} calls for 500 rows`);
  assert.ok(many.calls > 5000 && many.calls <= 11 * few.calls, `${many.calls} calls after ${few.calls}`);
  assert.ok(many.seconds <= 11 * few.seconds, `${many.seconds} s after ${few.seconds} s`);

  const page = await kitbay.page();
  const { x, y } = await page.middle('#installedchannels > div', 5);
  await run('xdotool', ['mousemove', String(x), String(y), 'click', '5']);
  await page.waitFor('installedchannels.scrollTop > 0');
  patience.begin();
  const last = 'installedchannels.lastElementChild';
  await page.eval(`${last}.scrollIntoView()`);
  const before = await page.calls();
  await kitbay.click('#installedchannels > div:last-child > span > font:first-child');
  await page.waitFor(`${last}.children[1].style.display === ''`);
  t.diagnostic(`${(await page.calls()).total - before.total} calls for a click`);
  assert.deepEqual(suite.logEntries(), []);
});
