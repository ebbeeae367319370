// How many calls into the page long lists take: each is felt in a list of hundreds of rows.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { afterEach, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { patience, sourcesAnswered, Suite } from './harness.mjs';

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
