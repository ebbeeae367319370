// The installer, in a Wine prefix that has never seen Kitbay: which of its two programs it
// installs, silent installation, the program started from its shortcut, silent removal, and what is
// left afterwards.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const bits = process.env.KITBAY_BITS ?? '64';
const prefix = path.join(root, `build/wine-package-${bits}`);
process.env.WINEPREFIX = prefix;
// The installer is a 32-bit program.
process.env.KITBAY_WOW64 = bits === '64' ? 'yes' : '';
const skip = !fs.existsSync(path.join(root, 'build/deps/wine32')) && 'there is no 32-bit Wine on this machine';
const { buildFolder, eventually, isKitbay, Program, rowsOf, run, Suite, windows, windowsPath, wine } = await import(
  './harness.mjs'
);

const installer = path.join(root, 'build/package/KitbaySetup.exe');
const driveC = path.join(prefix, 'drive_c');
const uninstallKey = 'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Kitbay';
const files = [
  'AddonUpdates.html', 'Kitbay.exe', 'Kitbay.spdx.json', 'Licence.txt', 'Licences of libraries.txt', 'OvalinkSuite.dll',
  'OvalinkSuite.manifest', 'Uninstall.exe', 'User guide.txt', 'iaddons.gif', 'ichannels.gif', 'itrans.gif', 'tabs', 'uaddons.gif',
  'uchannels.gif', 'utrans.gif',
];

let user;
let folder;
let startMenu;
let filesBefore;
let keysBefore;
let kitbay;

/**
 * Every file and folder of drive C except those of the sample suite and its user, and temporary
 * files: the uninstaller runs from a copy there, which Windows deletes at its next start. Names
 * that begin with "." belong to the browser, in the home folder that Wine links to.
 */
const filesOfDrive = () =>
  fs
    .readdirSync(driveC, { recursive: true })
    .filter((name) => !/^(Program Files\/Ovalink|users\/[^/]*\/AppData\/Roaming\/Ovalink)(\/|$)/.test(name))
    .filter((name) => !/^(users\/[^/]*\/(AppData\/Local\/)?Temp|windows\/temp)\/|\/\./i.test(name))
    .sort();

/**
 * The user's keys with their values, including those of all classes, without the suite's own key.
 */
async function keysOfUser() {
  const texts = [];
  for (const key of ['HKCU\\Software', 'HKLM\\Software\\Classes']) {
    const file = path.join(prefix, 'keys.reg');
    await wine('reg', 'export', key, `Z:${file.replaceAll('/', '\\')}`, '/y');
    texts.push(fs.readFileSync(file, 'utf16le'));
    fs.rmSync(file);
  }
  return texts
    .join('')
    .split(/\r?\n(?=\[)/)
    .filter((section) => !/^\[HKEY_CURRENT_USER\\Software\\(Ovalink|Wine)[\]\\]/i.test(section))
    .map((section) => section.trim())
    .sort();
}

async function values(key) {
  const listed = await wine('reg', 'query', key);
  return Object.fromEntries(
    [...listed.matchAll(/^ +(\S+) +(REG_\S+) +(.*?)\r?$/gm)].map(([, name, , value]) => [name, value]),
  );
}

/** 32 or 64, according to a program's header. */
function bitsOf(program) {
  const bytes = fs.readFileSync(program);
  return { 0x14c: 32, 0x8664: 64 }[bytes.readUInt16LE(bytes.readUInt32LE(0x3c) + 4)];
}

async function remove() {
  await wine(path.join(folder, 'Uninstall.exe'), '/S');
  await eventually('the end of the folder', () => !fs.existsSync(folder));
}

before(async () => {
  if (skip) return;
  await run(path.join(root, 'tools/wine_prefix'), ['--stop'], { env: process.env });
  fs.rmSync(prefix, { recursive: true, force: true });
  await run(path.join(root, 'tools/make_installer'));
  await run(path.join(root, 'tools/wine_prefix'), [], { env: process.env });
  const users = path.join(driveC, 'users');
  user = path.join(users, fs.readdirSync(users).find((name) => name !== 'Public'));
  folder = path.join(user, 'AppData/Local/Programs/Kitbay');
  startMenu = path.join(user, 'AppData/Roaming/Microsoft/Windows/Start Menu/Programs');
});
after(async () => {
  if (skip) return;
  await kitbay?.dispose();
  await run(path.join(root, 'tools/wine_prefix'), ['--stop'], { env: process.env });
});

const kEntry = 'Microsoft\\Windows\\CurrentVersion\\Uninstall\\Tessel';

/** Registers a suite with the main client of a build in a view of the registry. */
async function enterSuite(build, view) {
  const place = path.join(driveC, 'suite');
  fs.mkdirSync(place, { recursive: true });
  const client = 'standins/main_client/Tessel.exe';
  if (build) fs.copyFileSync(path.join(root, 'build', build, client), path.join(place, 'Tessel.exe'));
  await wine('reg', 'add', `HKLM\\SOFTWARE\\${view}${kEntry}`, '/v', 'InstallLocation', '/d', 'C:\\suite', '/f');
  return async () => {
    await wine('reg', 'delete', `HKLM\\SOFTWARE\\${view}${kEntry}`, '/f');
    fs.rmSync(place, { recursive: true });
  };
}

const kView32 = 'Wow6432Node\\';
for (const { what, build, view, expected, on } of [
  { what: 'no suite', expected: 32, on: ['32', '64'] },
  { what: 'a 32-bit suite', build: 'win32', view: kView32, expected: 32, on: ['64'] },
  { what: 'a 64-bit suite', build: 'win64', view: '', expected: 64, on: ['64'] },
  { what: 'a 64-bit suite registered as a 32-bit one', build: 'win64', view: kView32, expected: 64, on: ['64'] },
  { what: 'a 32-bit entry without a main client', view: kView32, expected: 32, on: ['64'] },
  { what: 'a 64-bit entry without a main client', view: '', expected: 64, on: ['64'] },
]) {
  if (!on.includes(bits)) continue;
  test(`for ${what} the ${expected}-bit program is installed`, { skip }, async () => {
    const takeBack = view === undefined ? () => {} : await enterSuite(build, view);
    try {
      await wine(installer, '/S');
      assert.equal(bitsOf(path.join(folder, 'Kitbay.exe')), expected);
      assert.equal(bitsOf(path.join(folder, 'OvalinkSuite.dll')), expected);
    } finally {
      await remove();
      await takeBack();
    }
  });
}

test('a silent installation puts the program where the user may write, and registers it', { skip }, async () => {
  // The test prefix has the build's objects registered, but Kitbay is to find its own.
  await wine('regsvr32', '/s', '/u', path.join(buildFolder, 'suite/OvalinkSuite.dll'));
  await Suite.layOut();
  filesBefore = filesOfDrive();
  keysBefore = await keysOfUser();
  await wine(installer, '/S');
  assert.equal(bitsOf(path.join(folder, 'Kitbay.exe')), Number(bits));
  assert.deepEqual(fs.readdirSync(folder).sort(), [...files].sort());
  const entry = await values(uninstallKey);
  const place = windowsPath(folder);
  assert.equal(entry.DisplayName, 'Kitbay');
  assert.match(entry.DisplayVersion, /^\d+\.\d+\.\d+$/);
  assert.equal(entry.InstallLocation, place);
  assert.equal(entry.QuietUninstallString, `"${place}\\Uninstall.exe" /S`);
});

test('the program that the shortcut names lists what is installed', { skip }, async () => {
  const link = fs.readFileSync(path.join(startMenu, 'Kitbay.lnk'));
  const target = link.toString('latin1').match(/C:\\[ -~]*?Kitbay\.exe/)[0];
  kitbay = Program.start(path.join(driveC, ...target.slice(3).split('\\')));
  const page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
  const rows = await page.eval(rowsOf('installedchannels'));
  assert.equal(rows[4].name, 'Recipe of the Day');
});

test('nothing is removed while the program runs', { skip }, async () => {
  // If it is told its folder, it works there instead of starting a copy of itself, and returns its
  // exit code.
  await assert.rejects(wine(path.join(folder, 'Uninstall.exe'), '/S', `_?=${windowsPath(folder)}`), { code: 2 });
  assert.deepEqual(fs.readdirSync(folder).sort(), [...files].sort());
  assert.equal(await kitbay.close(), 0);
  await eventually('the end of the window', async () => !(await windows()).some(isKitbay));
});

test('a silent removal restores the previous files and keys', { skip }, async () => {
  await remove();
  const programs = path.dirname(folder);
  assert.deepEqual(
    filesOfDrive().filter((name) => path.join(driveC, name) !== programs),
    filesBefore.filter((name) => path.join(driveC, name) !== programs),
  );
  assert.deepEqual(await keysOfUser(), keysBefore);
});

test('objects that an older installation registered are unregistered', { skip }, async () => {
  const clsid = 'HKCU\\Software\\Classes\\URLDownloadLib.URLDownload\\CLSID';
  await wine('regsvr32', '/s', path.join(buildFolder, 'suite/OvalinkSuite.dll'));
  await wine('reg', 'query', clsid);
  await wine(installer, '/S');
  await wine('reg', 'add', uninstallKey, '/v', 'SuiteObjects', '/d', 'registered', '/f');
  await wine(installer, '/S');
  await assert.rejects(wine('reg', 'query', clsid), { code: 1 });
  assert.equal((await values(uninstallKey)).SuiteObjects, undefined);
  await remove();
});

test("a file of the user's in the program's folder stays", { skip }, async () => {
  await wine(installer, '/S');
  fs.writeFileSync(path.join(folder, 'install.txt'), 'my own\r\n');
  await wine(path.join(folder, 'Uninstall.exe'), '/S');
  await eventually('the end of the program', () => fs.readdirSync(folder).length === 1);
  assert.deepEqual(fs.readdirSync(folder), ['install.txt']);
});
