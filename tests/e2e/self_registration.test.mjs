// Components whose libraries register themselves, and those whose libraries cause trouble.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { demandOnly, everything, kFolder, sumOf } from './everything.mjs';
import {
  allButtonsOn,
  buildFolder,
  confirmMessage,
  eventually,
  isKitbay,
  probe,
  registeredLibrary,
  run,
  Suite,
  windows,
  windowsPath,
} from './harness.mjs';

const kFailedToLoad = ' Kitbay::Loading of library failed';
const kTimeLimit = 10000;
const kReturnOfSlowLibrary = 15000;

const troubled = (name) => path.join(buildFolder, 'standins/component_libraries/troubled', name, `${name}.dll`);
const sound = (place) => path.join(buildFolder, 'standins/update_source/content', place);
const kReadMe = 'What there is to know.\r\n';

/**
 * The components on offer; `files` are the contents of their packages: a file of the build, or a
 * text.
 */
const components = {
  pair: {
    libraries: ['OvlScrapbook.dll', 'OvlPaste.dll'],
    files: {
      'OvlScrapbook.dll': { from: sound('scrapbook/OvlScrapbook.dll') },
      'OvlPaste.dll': { from: sound('scrapbook/OvlPaste.dll') },
    },
  },
  slow: {
    libraries: ['OvlSlow.dll', 'OvlPoll.dll'],
    files: { 'OvlSlow.dll': { from: troubled('OvlSlow') }, 'OvlPoll.dll': { from: sound('poll/OvlPoll.dll') } },
  },
  refusing: { libraries: ['OvlRefusing.dll'], files: { 'OvlRefusing.dll': { from: troubled('OvlRefusing') } } },
  mute: { libraries: ['OvlMute.dll'], files: { 'OvlMute.dll': { from: troubled('OvlMute') } } },
  crashing: { libraries: ['OvlCrashing.dll'], files: { 'OvlCrashing.dll': { from: troubled('OvlCrashing') } } },
  needy: { libraries: ['OvlNeedy.dll'], files: { 'OvlNeedy.dll': { from: troubled('OvlNeedy') } } },
  text: { libraries: ['OvlText.dll'], files: { 'OvlText.dll': { text: kReadMe } } },
  missing: { libraries: ['OvlMissing.dll'], files: { 'readme.txt': { text: kReadMe } } },
};

const nameOf = (id) => `The ${id} one`;

const manifest = (origin) => `<components><addons>${Object.entries(components)
  .map(
    ([id, { libraries }]) => `<addon id="${id}" type="tool">
      <name>${nameOf(id)}</name><version>1.0.0.0</version><description>For trying out.</description>
      <url>${origin}/packages/${id}.zip</url><progid>Ovl.${id}</progid><filename>${libraries[0]}</filename>
      <category>sample</category><autoaccept>0</autoaccept><params></params><offline>0</offline>
      <dependencies>${libraries.join(',')}</dependencies></addon>`,
  )
  .join('')}</addons><transports></transports><channels></channels></components>`;

/** The bytes of a package. */
async function packageOf(files) {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'kitbay-package-'));
  try {
    for (const [name, { from, text }] of Object.entries(files)) {
      fs.writeFileSync(path.join(folder, name), contentOf({ from, text }));
    }
    await run('cmake', ['-E', 'tar', 'cf', 'package.zip', '--format=zip', '--', ...Object.keys(files)], { cwd: folder });
    return fs.readFileSync(path.join(folder, 'package.zip'));
  } finally {
    fs.rmSync(folder, { recursive: true });
  }
}

let source;
let suite;
let kitbay;
let page;
let slowHasReturned;

before(async () => {
  source = await UpdateSource.start();
  source.publish('/trouble.xml', manifest(source.origin));
  for (const [id, { files }] of Object.entries(components)) {
    source.publish(`/packages/${id}.zip`, await packageOf(files));
  }
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/trouble.xml` });
  kitbay = suite.start();
  page = await kitbay.answeredPage();
  await kitbay.show('update', 'addons');
});
after(async () => {
  await kitbay?.dispose();
  await source.close();
});

/** The log entry of a library that cannot be loaded, with the system's own text. */
const notLoaded = async (number, library) => [number, kFailedToLoad, await probe('description', String(number), library)];

const installed = (id, file) => path.join(suite.folder, 'addons', id, file);

/** The bytes of a component's file. */
const contentOf = ({ from, text }) => (from ? fs.readFileSync(from) : Buffer.from(text));

/** What a component's installation changes; `failures` are the entries in the log. */
function changesOf(id, failures) {
  const { libraries, files } = components[id];
  const entry =
    `<addon id="${id}" name="${nameOf(id)}" visibility="show" type="tool"><progid>Ovl.${id}</progid>` +
    `<namespace>${id}</namespace><displayname>${nameOf(id)}</displayname><filename>${libraries[0]}</filename>` +
    '<compatiblewithallclients>1</compatiblewithallclients><autoaccept>0</autoaccept>' +
    '<description>For trying out.</description><core>1</core><params> </params></addon>';
  const placed = Object.entries(files).map(([name, file]) => [installed(id, name), sumOf(contentOf(file))]);
  return {
    files: { [path.dirname(installed(id, 'any'))]: kFolder, ...Object.fromEntries(placed) },
    registry: (text, file) => (file === 0 ? text.replace('</addons>', () => `${entry}</addons>`) : text),
    rows: { updatedaddons: (rows) => rows.filter((row) => row.name !== nameOf(id)) },
    log: failures,
    working: { [`${id}.zip`]: sumOf(source.contentOf(`/packages/${id}.zip`)) },
  };
}

/**
 * Installs a component with a click, and demands what is the same for each: the message, and that
 * nothing has changed except the files, the registry file's entry, the row that disappears, the
 * download, and `failures` in the log.
 */
async function install(id, { failures = [], untilItAnswers = async () => {} } = {}) {
  const before = await everything(suite, page);
  await kitbay.press('updatedaddons', nameOf(id), 'Install');
  await untilItAnswers();
  const text = await confirmMessage();
  await page.settled();
  assert.equal(
    text,
    `${nameOf(id)} addon has been successfully installed. Please restart Tessel to view the new feature.`,
  );
  await page.waitFor(allButtonsOn);
  await demandOnly(changesOf(id, failures), before, suite, page);
}

test('a library that does not return in time holds up neither the program nor the library after it', async () => {
  const nextLibrary = windowsPath(installed('slow', 'OvlPoll.dll'));
  assert.equal(await registeredLibrary('OvlPoll.Asker'), null);
  const began = Date.now();
  await install('slow', {
    // Nobody asks the program's windows for anything before they can answer.
    untilItAnswers: async () => {
      const isRegistered = async () => (await registeredLibrary('OvlPoll.Asker')) === nextLibrary;
      await eventually('the registration of the next library', isRegistered);
      assert.ok(Date.now() - began >= kTimeLimit);
      slowHasReturned = Date.now() + kReturnOfSlowLibrary - kTimeLimit + 2000;
    },
  });
  assert.ok((await windows()).some(isKitbay));
});

test('a library that fails is entered anyway', () => install('refusing'));

test('a library without the function is entered anyway', () => install('mute'));

test('a library that crashes is entered anyway', () => install('crashing'));

for (const [what, id, library, number] of [
  ['a file that is not a library', 'text', 'OvlText.dll', 193],
  ['a missing library', 'missing', 'OvlMissing.dll', 126],
  ['a library that needs a missing one', 'needy', 'OvlNeedy.dll', 126],
]) {
  test(`${what} is logged and entered`, async () => {
    await install(id, { failures: [await notLoaded(number, windowsPath(installed(id, library)))] });
  });
}

test('after the slow library has returned, both libraries of a component are registered', async () => {
  await eventually('the return of the slow library', () => Date.now() > slowHasReturned);
  assert.ok(kitbay.isRunning);
  await install('pair');
  assert.equal(await registeredLibrary('OvlScrapbook.Book'), windowsPath(installed('pair', 'OvlScrapbook.dll')));
  assert.equal(await registeredLibrary('OvlScrapbook.Paste'), windowsPath(installed('pair', 'OvlPaste.dll')));
});

test('the program ends as it should', async () => {
  assert.equal(await kitbay.close(), 0);
});
