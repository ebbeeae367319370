// The rules of kitbay-source's check, each with what the program shows its user for the same mistake.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, before, describe, test } from 'node:test';
import { zipOf } from '../../standins/update_source/hostile_packages.mjs';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { bits } from '../../tools/windows_build.mjs';
import {
  allButtonsOn, buildFolder, confirmMessage, prefixFolder, registeredLibrary, root, rowsOf, sourcesAnswered, Suite,
  whatIsInvalid, windowsPath,
} from './harness.mjs';

const otherBits = bits === '32' ? '64' : '32';
const otherCompiler = `${otherBits === '32' ? 'i686' : 'x86_64'}-w64-mingw32-gcc-posix`;
const corrupt = (id) => `Download of ${id}.zip is corrupt . Try again`;
const content = (place) => fs.readFileSync(path.join(buildFolder, 'standins/update_source/content', place));

// No single code page of Windows contains all of its letters.
const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'Źródło 数据 '));
const windowsName = (name) => `Z:${path.join(folder, name).replaceAll('/', '\\')}`;
const write = (name, bytes) => fs.writeFileSync(path.join(folder, name), bytes);
const read = (name) => fs.readFileSync(path.join(folder, name), 'utf8');

/** Runs kitbay-source; returns its exit code and what it printed. */
function tool(...words) {
  const program = path.join(buildFolder, 'src/source_tool/kitbay-source.exe');
  const env = { ...process.env, WINEPREFIX: prefixFolder, WINEDEBUG: '-all' };
  const { status, stdout, stderr } = spawnSync(path.join(root, 'tools/wine_run'), [program, ...words], { env });
  return { status, stdout: stdout.toString(), stderr: stderr.toString() };
}

/** What check finds in a manifest of the folder. */
function check(name, ...words) {
  const { status, stdout, stderr } = tool('check', windowsName(name), ...words, '--bits', bits, '--json');
  assert.ok(status < 2, stderr);
  assert.doesNotMatch(stderr, /\[[# ]*\]/); // no progress bar without a terminal
  const { findings } = JSON.parse(stdout);
  assert.equal(status, findings.length > 0 ? 1 : 0);
  return findings;
}

/** An entry without mistakes except the specified ones. */
function entry(id, others = {}) {
  const { attributes = `id="${id}" type="tool"`, leftOut, ...texts } = others;
  const elements = {
    name: id, version: '1.0.0.1', description: 'For trying out.', url: `${source.host}/packages/${id}.zip`,
    progid: `Ovl.${id}`, filename: '', category: '', autoaccept: '0', params: '', offline: '0', dependencies: '', ...texts,
  };
  delete elements[leftOut];
  const lines = Object.entries(elements).map(([name, text]) => `<${name}>${text}</${name}>`);
  return [`<addon ${attributes}>`, ...lines, '</addon>', ''].join('\n');
}

const manifestOf = (...entries) =>
  `<components>\n<addons>\n${entries.join('')}</addons>\n<transports/>\n<channels/>\n</components>\n`;

/** Serves a manifest, and puts it into the folder as well. */
function publish(name, text, place = `/${name}`) {
  write(name, text);
  source.publish(place, text);
}

/** Serves a package, and puts it into the folder as well. */
function publishPackage(id, files) {
  const bytes = zipOf(Object.entries(files).map(([name, file]) => ({ name, ...file })));
  write(`${id}.zip`, bytes);
  source.publish(`/packages/${id}.zip`, bytes);
}

const plain = { 'readme.txt': { bytes: 'What there is to know.' } };
const addonFile = (id, name) => path.join(suite.folder, 'addons', id, name);
const asked = (place) => source.requests.some((request) => request.path === place);

let source;
let suite;
let kitbay;
let page;
let findings;

const rows = async (container, name) =>
  (await page.eval(rowsOf(container))).filter((row) => row.name.toLowerCase() === name.toLowerCase());

async function start() {
  kitbay = suite.start();
  page = await kitbay.page();
}

/** Clicks Install, and returns the message to which that leads. */
async function install(name) {
  await kitbay.press('updatedaddons', name, 'Install');
  const text = await confirmMessage();
  await page.waitFor(allButtonsOn);
  return text;
}

const installed = (name) => `${name} addon has been successfully installed. Please restart Tessel to view the new feature.`;
const logged = () => suite.logEntries().map(({ procedure }) => procedure.trim());

const proven = new Set();

/** A rule: what check says about it, and what the program does. */
function rule(number, says, shows) {
  proven.add(number);
  test(`${number}: ${says.source.replaceAll('\\', '')}`, async () => {
    const found = findings.filter((finding) => finding.number === number && says.test(finding.what));
    assert.equal(found.length, 1, JSON.stringify(findings, null, 1));
    assert.ok(found[0].line > 0 && found[0].shows !== '' && found[0].todo !== '');
    await shows();
  });
}

/** A manifest and packages with the mistakes that show in the lists and with a click. */
function makeFaultySource() {
  const scrapbook = { filename: 'OvlScrapbook.dll', dependencies: 'OvlPaste.dll' };
  publish('faulty.xml', manifestOf(
    entry('moodpack', { attributes: 'type="tool" id="moodpack"' }), // K01
    entry('canvas', { name: 'Płótno', filename: 'OvlCanvas.dll', version: '3.0.0.13' }), // K02
    entry('chess', { filename: 'OvlChess.dll', version: '2.0.0.64' }), // K03
    entry('versioned', { name: 'Tool Version Two' }), // K04
    entry('pair', scrapbook), // K05
    entry('lasting', { category: 'games' }), // K06
    entry('hollow'), // K07
    entry('aux'), // K08
    entry('badname'), // K08
    entry('foreign', { filename: 'foreign.dll', dependencies: 'foreign.dll' }), // K09
    entry('huge'), // K10
    entry('twin'), entry('Twin'), // K15
    entry('absent'), // K17
  ));
  write('before.xml', manifestOf(entry('chess', { filename: 'OvlChess.dll', version: '1.1.0.64' })));
  for (const id of ['moodpack', 'canvas', 'chess', 'versioned', 'lasting', 'aux', 'twin', 'Twin']) {
    publishPackage(id, plain);
  }
  publishPackage('pair', {
    'OvlScrapbook.dll': { bytes: content('scrapbook/OvlScrapbook.dll'), deflated: true },
    'OvlPaste.dll': { bytes: content('scrapbook/OvlPaste.dll'), deflated: true },
  });
  publishPackage('hollow', { ...plain, 'empty.txt': {} });
  publishPackage('badname', { ...plain, 'aux.txt': { bytes: 'x' } });
  const library = execFileSync(otherCompiler, ['-print-file-name=libwinpthread-1.dll']).toString().trim();
  publishPackage('foreign', { 'foreign.dll': { bytes: fs.readFileSync(library), deflated: true } });
  publishPackage('huge', { ...plain, 'huge.bin': { bytes: 'x', size: 0x80000000 } });
  write('sources.xml', `<root><preferences><preference url="${source.host}/list~1.xml"/></preferences></root>`);
  source.publish('/list~1.xml', manifestOf(entry('hidden')));
}

/** Manifests with mistakes that affect a list or a source as a whole. */
function makeFaultyLists() {
  publish('ends.xml', manifestOf(
    entry('voicenotes', { name: 'Voice Notes', filename: 'OvlVoice.dll', version: '3.1' }), // K03
    entry('contactlink', { filename: 'OvlContacts.dll', version: '4.10.0.3' }),
    entry('headless', { leftOut: 'description' }), // K12
    entry('after'),
  ));
  publish('list.xml', manifestOf(entry('doubled')), '/one/list.xml');
  source.publish('/two/list.xml', read('list.xml'));
  publish('gate.xml', '<html><body>Log in</body></html>');
  publish('tampered.xml', read('signed.xml').replace('<addons>', '<addons><!-- more -->'));
  const urls = ['/one/list.xml', '/two/list.xml'].map((place) => `<preference url="${source.host}${place}"/>`);
  write('sources.xml', `<root><preferences>${urls.join('\n')}</preferences></root>`);
}

let key;

/** A source that signs, made with the tool; then its package is changed. */
function makeSignedSource() {
  const made = tool('init', windowsName('signed.xml'));
  assert.equal(made.status, 0, made.stderr);
  [, key] = /URL#(\w{64})/.exec(made.stdout);
  publishPackage('changed', plain);
  const added = tool('add', windowsName('signed.xml'), windowsName('changed.zip'), '--url', `${source.host}/packages`,
    '--version', '1.0.0.1');
  assert.equal(added.status, 0, added.stderr);
  const signed = tool('sign', windowsName('signed.xml'));
  assert.equal(signed.status, 0, signed.stderr);
  assert.equal(whatIsInvalid(path.join(folder, 'signed.xml')), '');
  source.publish('/signed.xml', read('signed.xml'));
  publishPackage('changed', { 'readme.txt': { bytes: 'What there is to KNOW.' } });
}

before(async () => {
  source = await UpdateSource.start();
});
after(async () => {
  await kitbay?.dispose();
  await source.close();
  fs.rmSync(folder, { recursive: true });
});

/** Lays out a suite with these sources; those that sign have the key. */
async function layOut(first, ...more) {
  suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}${first}` });
  const items = more.map((place) =>
    `<preference url='${source.host}${place}'${/signed|tampered/.test(place) ? ` key='${key}'` : ''}/>`);
  fs.mkdirSync(suite.userFolder, { recursive: true });
  fs.writeFileSync(path.join(suite.userFolder, 'updatepreference.xml'),
    `<root><preferences><preference url=''/>${items.join('')}</preferences></root>`);
}

describe('What a user meets in the lists and with a click', () => {
  before(async () => {
    makeFaultySource();
    findings = check('faulty.xml', '--packages', windowsName(''), '--previous', windowsName('before.xml'), '--sources',
      windowsName('sources.xml'));
    await layOut('/faulty.xml', '/list~1.xml');
    await start();
    await page.waitFor(sourcesAnswered);
    await kitbay.show('update', 'addons');
  });
  after(() => kitbay?.dispose());

  test('the tool names files as they are named', () => {
    assert.equal(findings[0].file, windowsName('faulty.xml'));
    assert.match(tool('check', windowsName('none.xml')).stderr, /Źródło 数据 .*none\.xml/);
  });

  test('nothing else is found', () => {
    assert.deepEqual(findings.map(({ number, what }) => `${number} ${what}`).filter((text) =>
      !/^K(01|02|03|04|05|06|07|08|09|10|15|17) /.test(text)), []);
  });

  rule('K01', /the id is not the first attribute/, async () => {
    assert.ok(fs.existsSync(addonFile('moodpack', 'OvlMoods.dll'))); // it is installed
    assert.deepEqual((await rows('updatedaddons', 'moodpack')).map(({ buttons }) => buttons), [['Install']]);
  });

  rule('K03', /version 2\.0\.0\.64 does not count as newer than 1\.1\.0\.64/, async () => {
    const [{ version, buttons }] = await rows('installedaddons', 'Chess');
    assert.deepEqual([version, buttons], ['Version 1.1.0.64', ['Remove']]);
  });

  rule('K15', /has the id "Twin" already/, async () => {
    assert.equal((await rows('updatedaddons', 'twin')).length, 2);
  });

  rule('K04', /the name "Tool Version Two" contains "Version"/, async () => {
    await kitbay.press('updatedaddons', 'Tool Version Two', 'Install');
    await page.settled();
    await page.waitFor(allButtonsOn);
    assert.ok(!asked('/packages/versioned.zip'));
  });

  rule('K05', /the list of libraries is "OvlPaste\.dll" alone/, async () => {
    assert.equal(await install('pair'), installed('pair'));
    assert.equal(await registeredLibrary('OvlScrapbook.Book'), windowsPath(addonFile('pair', 'OvlScrapbook.dll')));
    assert.equal(await registeredLibrary('OvlScrapbook.Paste'), null);
  });

  rule('K07', /the package hollow\.zip has the empty file empty\.txt/, async () => {
    assert.equal(await install('hollow'), installed('hollow'));
    assert.deepEqual(fs.readdirSync(path.dirname(addonFile('hollow', 'any'))), ['readme.txt']);
  });

  rule('K08', /the id "aux" is not a name that Windows keeps/, async () => {
    await kitbay.press('updatedaddons', 'aux', 'Install');
    await page.settled();
    await page.waitFor(allButtonsOn);
    assert.ok(!asked('/packages/aux.zip'));
    assert.equal(logged().at(-1), 'Kitbay::DownloadAddon');
  });

  rule('K08', /the package badname\.zip would not be expanded: the name aux\.txt/, async () => {
    assert.equal(await install('badname'), corrupt('badname'));
    assert.ok(!fs.existsSync(addonFile('badname', 'readme.txt')));
  });

  rule('K08', /"list~1\.xml" is not a valid name for a manifest/, async () => {
    assert.ok(asked('/faulty.xml') && !asked('/list~1.xml'));
    assert.deepEqual(await rows('updatedaddons', 'hidden'), []);
  });

  rule('K09', new RegExp(`the package foreign\\.zip has a library of ${otherBits} bits, foreign\\.dll`), async () => {
    assert.equal(await install('foreign'), installed('foreign'));
    assert.equal(logged().at(-1), 'Kitbay::Loading of library failed');
  });

  rule('K10', /the package huge\.zip has a file of more than 2 GB, huge\.bin/, async () => {
    assert.equal(await install('huge'), corrupt('huge'));
    assert.ok(!fs.existsSync(addonFile('huge', 'readme.txt')));
  });

  rule('K17', /the package absent\.zip is not there/, async () => {
    assert.equal(await install('absent'), '/packages/absent.zip      The server answered 404 (Not Found)');
  });

  rule('K06', /there is a category, "games"/, async () => {
    assert.equal(await install('lasting'), installed('lasting'));
    assert.equal(await kitbay.close(), 0);
    await start();
    await page.waitFor(sourcesAnswered);
    await kitbay.show('installed', 'addons');
    const canBeRemoved = async (name) => (await rows('installedaddons', name)).map(({ buttons }) => buttons.includes('Remove'));
    assert.deepEqual(await canBeRemoved('lasting'), [false]);
    assert.deepEqual(await canBeRemoved('hollow'), [true]);
  });

  // Last, because the buttons of an update that leads to nothing stay disabled.
  rule('K02', /the name "Płótno" is not the id "canvas"/, async () => {
    await kitbay.press('installedaddons', 'Płótno', 'Update');
    await page.settled();
    assert.ok(!asked('/packages/canvas.zip'));
    assert.equal(await page.eval(allButtonsOn), false);
  });
});

describe('What a user meets at the start', () => {
  before(async () => {
    makeSignedSource();
    makeFaultyLists();
    findings = [
      ...check('list.xml', '--sources', windowsName('sources.xml')),
      ...check('gate.xml'),
      ...check('signed.xml', '--packages', windowsName(''), '--public', key),
      ...check('tampered.xml', '--public', key),
      ...check('ends.xml'),
    ];
    await layOut('/one/list.xml', '/two/list.xml', '/gate.xml', '/signed.xml', '/tampered.xml', '/ends.xml');
    await start();
  });

  rule('K16', /the document element is not "components"/, async () => {
    assert.equal(await confirmMessage(), "/gate.xml      The server's answer is not a list of components");
  });

  rule('K14', /the manifest was changed after it was signed/, async () => {
    assert.equal(await confirmMessage(), '/tampered.xml      tampered.xml was changed after it was signed');
    await page.waitFor(sourcesAnswered);
    assert.ok(!fs.existsSync(path.join(suite.programFolder, 'tampered.xml')));
  });

  // The last source decides the list of what is installed.
  rule('K03', /the version "3\.1" has fewer than the four parts/, async () => {
    const all = await page.eval(rowsOf('installedaddons'));
    assert.deepEqual([all.at(-1).name, all.at(-1).buttons], ['Address Book Link', ['Update']]);
    assert.ok(logged().includes('Kitbay::AddAddonInfo'));
  });

  rule('K12', /an element or attribute is missing/, async () => {
    await kitbay.show('update', 'addons');
    assert.deepEqual(await rows('updatedaddons', 'after'), []);
    assert.ok(logged().includes('Kitbay::UpdatesAddonInfo'));
  });

  rule('K13', /the package changed\.zip is not what was announced/, async () => {
    assert.equal(await install('changed'), corrupt('changed'));
    assert.ok(!fs.existsSync(addonFile('changed', 'readme.txt')));
  });

  rule('K11', /two\/list\.xml has the file name of .*one\/list\.xml/, async () => {
    assert.equal((await rows('updatedaddons', 'doubled')).length, 2);
    assert.equal(await kitbay.close(), 0);
  });
});

test('every documented rule is proven, and no other', () => {
  const text = fs.readFileSync(path.join(root, 'docs/kitbay-source.md'), 'utf8');
  const written = [...text.matchAll(/^\| (K\d\d) \|/gm)].map(([, number]) => number);
  assert.deepEqual([...proven].sort(), written);
});
