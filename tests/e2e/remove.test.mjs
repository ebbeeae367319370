// A click on Remove, with the main client running and not running.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything } from './everything.mjs';
import { allButtonsOn, confirmMessage, MainClient, rowsOf, Suite } from './harness.mjs';

let source;
let suite;
let client;
let kitbay;
let page;

before(async () => {
  source = await UpdateSource.start();
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  client = new MainClient(suite);
  await start();
});
after(async () => {
  await kitbay?.dispose();
  await client.close();
  await source.close();
});

async function start() {
  kitbay = suite.start();
  page = await kitbay.answeredPage();
}

const namesIn = async (container) => (await page.eval(rowsOf(container))).map(({ name }) => name);

/** `word` is the kind's name in the user's messages. */
const kKinds = {
  addon: { tab: 'addons', container: 'installedaddons', element: 'addon', word: 'Addon' },
  service: { tab: 'trans', container: 'installedtransports', element: 'transport', word: '' },
  channel: { tab: 'channels', container: 'installedchannels', element: 'channel', word: 'Channel' },
};
const kRunning = (name, { word }) =>
  `To Remove ${name} ${word} Tessel  needs to be shut down. Please restart Tessel for the changes to take effect.`;
const kNotRunning = (name, { word }) => `Are you sure you want to Remove the ${name} ${word}.`;

/** Clicks Remove; returns the previous state of everything. */
async function press(name, kind) {
  await kitbay.show('installed', kind.tab);
  const before = await everything(suite, page);
  await kitbay.press(kind.container, name, 'Remove');
  return before;
}

/** Answers the question with Cancel, after which everything must be as it was. */
async function cancel(before, question) {
  assert.equal(await confirmMessage('Cancel'), question);
  await page.settled();
  await demandOnly({}, before, suite, page);
}

/** A registry file without the entry of a component. */
const withoutEntry = (text, { element }, id) =>
  text.replace(new RegExp(`<${element} id="${id}".*?</${element}>`, 's'), '');

/** Demands that the component's row and entry are gone, and that everything else is as before. */
async function removed({ name, id, kind }, before) {
  await page.waitFor(`!${kind.container}.innerText.includes(${JSON.stringify(name)})`);
  assert.ok(await page.eval(allButtonsOn));
  assert.notDeepEqual(suite.registryFiles(), before.registry);
  await demandOnly(
    {
      registry: (text) => withoutEntry(text, kind, id),
      rows: { [kind.container]: (rows) => rows.filter((row) => row.name !== name) },
    },
    before,
    suite,
    page,
  );
}

for (const component of [
  { name: 'Chess', id: 'chess', kind: kKinds.addon },
  { name: 'Postoffice', id: 'postoffice', kind: kKinds.service },
  { name: 'Weather', id: 'weather', kind: kKinds.channel },
]) {
  const { name, kind } = component;
  test(`a running main client is closed before "${name}" is removed, and not started again`, async () => {
    await client.start();
    const events = client.events();

    await cancel(await press(name, kind), kRunning(name, kind));
    assert.deepEqual([client.events(), await client.count()], [events, 1]);

    const before = await press(name, kind);
    assert.equal(await confirmMessage(), kRunning(name, kind));
    await client.event(events.length + 1, 'the end of the main client');
    await removed(component, before);
    assert.deepEqual([client.events(), await client.count()], [[...events, 'closed'], 0]);
  });
}

for (const component of [
  { name: 'Moods & Gestures', id: 'moodpack', kind: kKinds.addon },
  { name: 'Réseau local', id: 'lanlink', kind: kKinds.service },
  { name: 'Morning Headlines', id: 'headlines', kind: kKinds.channel },
  { name: 'Recipe of the Day', id: 'recipes', kind: kKinds.channel },
]) {
  const { name, kind } = component;
  test(`"${name}" is removed after a question while the main client does not run`, async () => {
    const events = client.events();

    await cancel(await press(name, kind), kNotRunning(name, kind));

    const before = await press(name, kind);
    assert.equal(await confirmMessage(), kNotRunning(name, kind));
    await removed(component, before);
    assert.deepEqual([client.events(), await client.count()], [events, 0]);
  });
}

test('the next start no longer lists them, and offers those that a source has as new', async () => {
  assert.equal(await kitbay.close(), 0);
  await start();
  const lists = ['addons', 'transports', 'channels'];
  const installed = Object.fromEntries(
    await Promise.all(lists.map(async (list) => [list, await namesIn(`installed${list}`)])),
  );
  assert.deepEqual(installed, {
    addons: [
      ...['Spell Checker', 'Übersetzer', 'Café-Status', 'Płótno', 'File Drop'],
      ...['Auto Reply', 'Address Book Link', 'Voice Notes'],
    ],
    transports: ['Ovalink Network', 'Text Message Gateway'],
    channels: ['Presence', 'Départs', 'Sternenhimmel über Ålesund'],
  });
  assert.deepEqual(await namesIn('updatedaddons'), ['Chess', 'Scrapbook']);
  assert.deepEqual(await namesIn('updatedtransports'), ['Postoffice', 'Relay']);
  assert.deepEqual(await namesIn('updatedchannels'), ['Weather', 'Recipe of the Day', 'Tides']);
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});
