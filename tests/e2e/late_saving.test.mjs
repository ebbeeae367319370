// A main client that saves the datastore while it ends, after its window has closed.
import assert from 'node:assert/strict';
import { afterEach, before, after, beforeEach, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { allButtonsOn, confirmMessage, MainClient, Suite } from './harness.mjs';

let source;
let suite;
let client;
let kitbay;
let page;
let registryFiles;

before(async () => (source = await UpdateSource.start()));
after(() => source.close());

beforeEach(async () => {
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  suite.write('Tessel.saves', '');
  client = new MainClient(suite);
  kitbay = suite.start();
  page = await kitbay.answeredPage();
  await client.start();
  registryFiles = suite.registryFiles();
});
afterEach(async () => {
  await kitbay.dispose();
  await client.close();
});

/** Demands that the datastore contains both what the main client saved and what Kitbay changed. */
async function demandBoth(change) {
  assert.equal(await kitbay.close(), 0);
  const saved = (text) => text.replace('</root>', '<!--saved by Tessel--></root>');
  suite.demandRegistryFiles(registryFiles, (text, file) => (file === 0 ? change(saved(text)) : text));
  assert.deepEqual(suite.logEntries(), []);
}

test('it neither undoes a removal nor is overwritten by it', async () => {
  await kitbay.show('installed', 'addons');
  await kitbay.press('installedaddons', 'Chess', 'Remove');
  await confirmMessage();
  await page.waitFor(`!installedaddons.innerText.includes('Chess')`);
  assert.deepEqual(client.events(), ['started', 'saved', 'closed']);
  await demandBoth((text) => text.replace(/<addon id="chess".*?<\/addon>/s, ''));
});

test('it neither undoes an update nor is overwritten by it', async () => {
  await kitbay.show('installed', 'channels');
  await kitbay.press('installedchannels', 'Presence', 'Update');
  await confirmMessage();
  await client.event(4, 'the restart of the main client');
  await page.waitFor(allButtonsOn);
  assert.deepEqual(client.events(), ['started', 'saved', 'closed', 'started']);
  await demandBoth((text) => text.replace('"Presence" version="2.0.4"', '"Presence" version="2.0.5"'));
});
