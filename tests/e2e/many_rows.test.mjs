// Lists of hundreds and thousands of components.
//
// Compared are counts, and processor time within one run: on a busy machine a run takes up to half as much
// again as the one before. A long list has the limit of a test again for each of its parts.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { afterEach, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { eventually, patience, run, Suite } from './harness.mjs';

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

test('a refresh while a download runs takes at most ten calls into the page per row', async () => {
  const count = 250;
  source = await UpdateSource.start();
  source.publish('/many.xml', manifestFor(count));
  source.publish('/packages/many.zip', 'never sent');
  await suiteOf(count, { KITBAY_UPDATE_SOURCE: `${source.host}/many.xml` });
  const held = source.misbehave('/packages/many.zip', 'stall');
  kitbay = suite.start();
  const page = await kitbay.answeredPage();
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

/**
 * Waits until so many channels are listed. Returns the processor time that the program had used when it had so
 * many rows, some times in between too. Meanwhile it paints nothing, and only its calls tell.
 */
async function listed(page, count) {
  const rowsNow = async () => (await page.calls()).members.appendChild ?? 0;
  const taken = [{ rows: await rowsNow(), seconds: kitbay.processorSeconds() }];
  for (let goal = kPart; goal <= count; goal += kPart) {
    patience.begin();
    const rows = await eventually(`${goal} rows`, async () => {
      const rows = await rowsNow();
      return rows >= goal && rows;
    });
    taken.push({ rows, seconds: kitbay.processorSeconds() });
  }
  patience.begin();
  await page.waitFor(`installedchannels.childElementCount > ${count}`);
  await page.settled();
  return taken;
}

/** A start that lists `count` channels: the calls into the page, and what listed() returns. */
async function listingOf(count) {
  await kitbay?.dispose();
  await suiteOf(count);
  kitbay = suite.start();
  const page = await kitbay.page();
  const taken = await listed(page, count);
  return { calls: (await page.calls()).total, taken };
}

/** Milliseconds of processor time for each row between two moments. */
const costOfRow = (from, to) => (1000 * (to.seconds - from.seconds)) / (to.rows - from.rows);

test('the last of 5 000 rows cost at most 1.5 times as much as the first, and answer the mouse', async (t) => {
  const few = await listingOf(500);
  assert.ok(few.calls > 500 && few.calls <= 10 * 500, `${few.calls} calls for 500 rows`);
  const { calls, taken } = await listingOf(5000);
  assert.ok(calls > 5000 && calls <= 11 * few.calls, `${calls} calls after ${few.calls}`);
  const atFirst = costOfRow(taken[0], taken.find(({ rows }) => rows >= taken[0].rows + 1000));
  const atLast = costOfRow(taken.findLast(({ rows }) => rows <= 4000), taken.at(-1));
  const costs = `${atFirst.toFixed(1)} ms for each of the first rows, ${atLast.toFixed(1)} for each of the last`;
  t.diagnostic(costs);
  assert.ok(atLast <= 1.5 * atFirst, costs);

  patience.begin();
  const page = await kitbay.page();
  const { x, y } = await page.middle('#installedchannels > div', 5);
  await run('xdotool', ['mousemove', String(x), String(y), 'click', '5']);
  await page.waitFor('installedchannels.scrollTop > 0');

  patience.begin();
  const last = 'installedchannels.lastElementChild';
  await page.eval(`${last}.scrollIntoView()`);
  await kitbay.click('#installedchannels > div:last-child > span > font:first-child');
  await page.waitFor(`${last}.children[1].style.display === ''`);
  assert.deepEqual(suite.logEntries(), []);
});
