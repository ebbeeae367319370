// Lists of hundreds and thousands of components.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import fs from 'node:fs';
import { afterEach, beforeEach, test } from 'node:test';
import { promisify } from 'node:util';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { Suite } from './harness.mjs';

const run = promisify(execFile);
const kPatienceMs = 300000;
const kRowsOnPage = `document.querySelectorAll('.list > div').length`;

let source;
let suite;
let kitbay;

beforeEach(async () => (source = await UpdateSource.start()));
afterEach(async () => {
  await kitbay?.dispose();
  await source.close();
});

const numbered = (count, text) => Array.from({ length: count }, (_, i) => text(i + 1)).join('');

/** A suite with `count` channels and nothing else. */
async function suiteOf(count) {
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/many.xml` });
  fs.writeFileSync(suite.datastore, `<root><addons/><transports/><channels>${numbered(count, (i) =>
    `<channel id="c${i}" name="Channel ${i}" version="1.0"><description>Tells ${i}.</description><core>0</core></channel>`,
  )}</channels></root>`);
  fs.rmSync(suite.customRegistry, { force: true });
}

/** Has the update source offer an update for each of `count` channels. */
function offerUpdates(count) {
  source.publish('/many.xml', `<components><channels>${numbered(count, (i) =>
    `<channel id="c${i}"><name>Channel ${i}</name><version>1.5</version><description>Tells ${i}.</description>` +
    `<url>@ORIGIN@/packages/many.zip</url></channel>`,
  )}</channels></components>`);
  source.publish('/packages/many.zip', 'not read to its end');
}

const channel = (i) => `document.querySelectorAll('#installedchannels > div')[${i - 1}]`;

test('a refresh while a download runs takes at most ten calls into the page for a row', async () => {
  const count = 1000;
  await suiteOf(count);
  offerUpdates(count);
  const held = source.misbehave('/packages/many.zip', 'stall');
  kitbay = suite.start();
  const page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels input[value=Update]').length === ${count}`, kPatienceMs);
  await page.settled(kPatienceMs);
  await kitbay.press('installedchannels', 'Channel 3', 'Update');
  await held.reached;
  await page.waitFor(`document.querySelectorAll('#installedchannels input:disabled').length === ${2 * count}`, kPatienceMs);
  await page.settled(kPatienceMs);

  const before = await page.calls();
  await page.eval(`${channel(1)}.title = 'of the earlier list'`);
  const { x, y } = await page.middle('#installed');
  await run('xdotool', ['mousemove', String(x), String(y), 'click', '1']);
  await page.waitFor(`${channel(1)}?.title === ''`, kPatienceMs);
  await page.waitFor(`document.querySelectorAll('#installedchannels input:disabled').length === ${2 * count}`, kPatienceMs);
  await page.settled(kPatienceMs);
  const after = await page.calls();
  assert.equal(await page.eval(kRowsOnPage), count);
  assert.equal(await page.eval(`document.querySelectorAll('#installedchannels > .hasupdate').length`), count);
  const calls = after.total - before.total;
  assert.ok(calls <= 10 * count, `${calls} calls: ${JSON.stringify(after.members)}`);
});

/** The processor time that the listing of `count` channels takes, in seconds. */
async function timeOfListing(count) {
  await suiteOf(count);
  kitbay = suite.start();
  const page = await kitbay.page();
  await page.waitFor(`document.getElementById('itabencloser')`, kPatienceMs);
  const before = kitbay.processorSeconds();
  await page.waitFor(`${channel(count)}?.children.length === 2`, kPatienceMs);
  return kitbay.processorSeconds() - before;
}

test('5 000 rows take at most 11 times as long as 500, and answer the mouse', async (t) => {
  const few = await timeOfListing(500);
  await kitbay.dispose();
  const many = await timeOfListing(5000);
  t.diagnostic(`500 rows: ${few.toFixed(2)} s, 5 000 rows: ${many.toFixed(2)} s`);
  assert.ok(many <= 11 * few, `${many} s after ${few} s`);

  const page = await kitbay.page();
  await page.settled(kPatienceMs);
  const { x, y } = await page.middle('#installedchannels > div', 5);
  await run('xdotool', ['mousemove', String(x), String(y), 'click', '5']);
  await page.waitFor('installedchannels.scrollTop > 0');
  const name = '#installedchannels > div > span > font:first-child';
  await page.eval(`${channel(4000)}.scrollIntoView()`);
  await page.settled();
  const place = await page.middle(name, 3999);
  await run('xdotool', ['mousemove', String(place.x), String(place.y), 'click', '1']);
  await page.waitFor(`${channel(4000)}.children[1].style.display === ''`);
});
