// A click on Install, and everything that follows from it.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, placed, sumOf } from './everything.mjs';
import {
  allButtonsOn,
  buildFolder,
  confirmMessage,
  MainClient,
  registeredLibrary,
  rowsOf,
  Suite,
  windowsPath,
} from './harness.mjs';

const packages = path.join(buildFolder, 'standins/update_source/content');

let source;
let suite;
let client;
let kitbay;
let page;

/** Removes a channel from a registry file of the fresh installation, so that it is a new one. */
function withoutChannel(file, id) {
  const text = fs.readFileSync(file, 'utf8');
  const without = text.replace(new RegExp(` *<channel id="${id}"[^]*?</channel>\n`), '');
  assert.notEqual(without, text);
  fs.writeFileSync(file, without);
}

before(async () => {
  source = await UpdateSource.start();
  const partners = source.contentOf('/partners.xml').toString();
  const meshnet = /<transport id="meshnet">[^]*?<\/transport>/.exec(partners)[0];
  const manifest = source.contentOf('/ovalink.xml').toString();
  source.publish('/ovalink.xml', manifest.replace('</transports>', `${meshnet}</transports>`));
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  withoutChannel(suite.datastore, 'presence');
  withoutChannel(suite.customRegistry, 'recipes');
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
const installed = (...names) => path.join(suite.folder, ...names);
const ofTheUser = (...names) => path.join(suite.userFolder, 'CustomData', ...names);

const archiveOf = (id) => `/packages/${id}.zip`;
const downloaded = (...ids) =>
  Object.fromEntries(ids.map((id) => [`${id}.zip`, sumOf(source.contentOf(archiveOf(id)))]));

/** Shows a list of new components, and returns everything in its current state. */
async function shown(tab) {
  await kitbay.show('update', tab);
  return everything(suite, page);
}

/** Clicks the Install button of a new component; returns the final message. */
async function install(container, name) {
  await kitbay.press(container, name, 'Install');
  const text = await confirmMessage();
  await page.waitFor(allButtonsOn);
  return text;
}

/** Demands that everything is as before, except for `changes`. */
const changed = (before, changes) => demandOnly(changes, before, suite, page);

/** The change of the registry files that adds an entry at the end of a list in one of them. */
const added = (changedFile, list, entry) => (text, file) =>
  file === changedFile ? text.replace(`</${list}>`, () => `${entry}</${list}>`) : text;

/** The change of a list that removes a row from it. */
const without = (name) => (rows) => rows.filter((row) => row.name !== name);

const [kDatastore, kCustomRegistry] = [0, 1];
const kNotFound = 'The server answered 404 (Not Found)';

test('a package that the source does not have is reported, and may be requested again', async () => {
  const before = await shown('addons');
  source.misbehave(archiveOf('scrapbook'), '404');
  const text = await install('updatedaddons', 'Scrapbook');
  assert.equal(text, `//${source.host}${archiveOf('scrapbook')}      ${kNotFound}`);
  source.behave(archiveOf('scrapbook'));
  await changed(before, { log: [[0, 'Kitbay::OvTransportEvents_Exception', kNotFound]] });
});

for (const { what, name, id, tab, container, place, list, entry, message, file, libraries } of [
  {
    what: 'an addon with two libraries',
    name: 'Scrapbook',
    id: 'scrapbook',
    tab: 'addons',
    container: 'updatedaddons',
    place: () => installed('addons/scrapbook'),
    list: 'addons',
    entry:
      '<addon id="scrapbook" name="Scrapbook" visibility="show" type="tool">' +
      '<progid>OvlScrapbook.Book</progid><namespace>scrapbook</namespace>' +
      '<displayname>Play Scrapbook</displayname><filename>OvlScrapbook.dll</filename>' +
      '<compatiblewithallclients>0</compatiblewithallclients><autoaccept>0</autoaccept>' +
      '<description>Collects what you clip out of messages – sentences, pictures &amp; addresses – on ' +
      'pages of your own, and finds it again by day or by sender.</description><core>0</core>' +
      '<params><rulesengine>OvlScrapbook.Rules</rulesengine><ocxengine>OvlScrapbook.Pages</ocxengine></params>' +
      '<offline>1</offline></addon>',
    message: 'Scrapbook addon has been successfully installed. Please restart Tessel to view the new feature.',
    file: kDatastore,
    libraries: { 'OvlScrapbook.Book': 'OvlScrapbook.dll', 'OvlScrapbook.Paste': 'OvlPaste.dll' },
  },
  {
    what: 'the presence channel',
    name: 'Presence',
    id: 'presence',
    tab: 'channels',
    container: 'updatedchannels',
    place: () => installed('Channels/presence'),
    list: 'channels',
    entry:
      '<channel id="presence" name="Presence" version="2.0.5"><progid>OvlChannel.Presence</progid>' +
      '<path>presence.xml</path><filename></filename><description>Tells your contacts whether you are ' +
      'there, busy or away. New: "back at", with a time of your choice.</description><core>1</core></channel>',
    message: 'Presence Channel has been successfully installed. Please restart Tessel to view the new feature.',
    file: kDatastore,
    libraries: {},
  },
  {
    what: 'another channel, with a library,',
    name: 'Tides',
    id: 'tides',
    tab: 'channels',
    container: 'updatedchannels',
    place: () => ofTheUser('channels/tides'),
    list: 'channels',
    entry:
      '<channel id="tides" name="Tides" version="1.0.1"><progid>OvlTides.Table</progid><path>tides.xml</path>' +
      '<filename></filename><description>High and low water for the harbours from Göteborg to A Coruña, for ' +
      'today and the six days after.</description><core>0</core></channel>',
    message: 'Tides Channel has been successfully installed. Please restart Tessel to view the new feature.',
    file: kCustomRegistry,
    libraries: { 'OvlTides.Table': 'OvlTides.dll' },
  },
  {
    what: 'a messaging service with two libraries',
    name: 'Meshnet',
    id: 'meshnet',
    tab: 'trans',
    container: 'updatedtransports',
    place: () => installed('meshnet'),
    list: 'transports',
    entry:
      '<transport id="meshnet" name="Meshnet" type="messaging service"><displayname>Meshnet</displayname>' +
      '<instructions>Choose a name; whoever comes near will see it.</instructions>' +
      '<progid>OvlMesh.Transport</progid><filename>OvlMesh.dll,OvlMeshRadio.dll</filename>' +
      '<description>Meshnet</description><core>0</core><useapplicationlogin>0</useapplicationlogin></transport>',
    message:
      'Meshnet messaging service has been successfully installed. Please restart Tessel to view the new feature.',
    file: kDatastore,
    libraries: { 'OvlMesh.Transport': 'OvlMesh.dll', 'OvlMesh.Radio': 'OvlMeshRadio.dll' },
  },
]) {
  test(`${what} is expanded, registered, entered and reported`, async () => {
    const content = path.join(packages, id, fs.existsSync(path.join(packages, id, id)) ? id : '');
    const before = await shown(tab);

    assert.equal(await install(container, name), message);

    await changed(before, {
      files: placed(content, place()),
      registry: added(file, list, entry),
      rows: { [container]: without(name) },
      working: downloaded(id),
    });
    for (const [progId, library] of Object.entries(libraries)) {
      assert.equal(await registeredLibrary(progId), windowsPath(path.join(place(), library)));
    }
  });
}

test('a messaging service of one library lies in the installation folder itself', async () => {
  const before = await shown('trans');
  assert.equal(
    await install('updatedtransports', 'Relay'),
    'Relay messaging service has been successfully installed. Please restart Tessel to view the new feature.',
  );
  const entry =
    '<transport id="relay" name="Relay" type="messaging service"><displayname>Relay</displayname>' +
    '<instructions>Enter the name of your relay; your administrator knows it.</instructions>' +
    '<progid>OvlRelay.Transport</progid><filename>OvlRelay.dll</filename><description>Relay</description>' +
    '<core>0</core><useapplicationlogin>0</useapplicationlogin></transport>';
  assert.deepEqual(Object.keys(placed(path.join(packages, 'relay'), suite.folder)), [
    suite.folder,
    installed('OvlRelay.dll'),
  ]);
  await changed(before, {
    files: placed(path.join(packages, 'relay'), suite.folder),
    registry: added(kDatastore, 'transports', entry),
    rows: { updatedtransports: without('Relay') },
    working: downloaded('relay'),
  });
  assert.equal(await registeredLibrary('OvlRelay.Transport'), windowsPath(installed('OvlRelay.dll')));
});

test('a channel is not installed where the user has a data folder, but none for channels', async () => {
  const before = await shown('channels');
  fs.renameSync(ofTheUser('channels'), ofTheUser('elsewhere'));
  await kitbay.press('updatedchannels', 'Recipe of the Day', 'Install');
  await source.request(archiveOf('recipes'));
  await page.waitFor(allButtonsOn);
  fs.renameSync(ofTheUser('elsewhere'), ofTheUser('channels'));
  await changed(before, {
    log: [[58, 'Kitbay::UnpackChannel', 'File already exists']],
    working: downloaded('recipes'),
  });
});

test('an installation neither starts the main client nor leaves anything in the working folder', async () => {
  assert.deepEqual(client.events(), []);
  assert.equal(await kitbay.close(), 0);
  assert.equal(fs.existsSync(suite.workingFolder), false);
});

test('the next start lists what was installed, offers to remove it, and finds its updates', async () => {
  const manifest = source.contentOf('/ovalink.xml').toString();
  source.publish('/ovalink.xml', manifest.replaceAll(/(<version>[\d.]*\.)\d+/g, '$1999'));
  const yesterday = new Date(Date.now() - 24 * 60 * 60 * 1000);
  fs.utimesSync(path.join(suite.programFolder, 'ovalink.xml'), yesterday, yesterday);
  await start();
  const lists = {};
  for (const kind of ['addons', 'transports', 'channels']) {
    const rows = await page.eval(rowsOf(`installed${kind}`));
    lists[kind] = Object.fromEntries(rows.map(({ name, version, buttons }) => [name, [version, ...buttons]]));
  }
  assert.deepEqual(lists.addons.Scrapbook, ['Version 1.0.2.0', 'Remove', 'Update']);
  assert.deepEqual(lists.transports.Relay, ['Version 1.0.0.1', 'Remove', 'Update']);
  assert.deepEqual(lists.transports.Meshnet, ['Version N/A', 'Remove']); // two libraries have no one version
  assert.deepEqual(lists.channels.Presence, ['Version 2.0.5', 'Update']); // a core component
  assert.deepEqual(lists.channels.Tides, ['Version 1.0.1', 'Remove', 'Update']);
  assert.deepEqual(await namesIn('updatedchannels'), ['Recipe of the Day']);
  assert.deepEqual(await namesIn('updatedtransports'), []);
  assert.equal(await kitbay.close(), 0);
  assert.deepEqual(suite.logEntries(), []);
});
