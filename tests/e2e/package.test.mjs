// The installer, in a Wine prefix that has never seen Kitbay: silent installation, the program started
// from its shortcut, silent removal, and what is left of it all.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { promisify } from 'node:util';
import { fileURLToPath } from 'node:url';

const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const prefix = path.join(root, 'build/wine-package');
process.env.WINEPREFIX = prefix;
const { buildFolder, eventually, isKitbay, Program, rowsOf, Suite, windows, windowsPath, wine } = await import('./harness.mjs');

const run = promisify(execFile);
const installer = path.join(root, 'build/package/KitbaySetup-x64.exe');
const driveC = path.join(prefix, 'drive_c');
const uninstallKey = 'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Kitbay';
const files = [
  'AddonUpdates.html', 'Kitbay.exe', 'Licence.txt', 'Licences of libraries.txt', 'OvalinkSuite.dll',
  'Uninstall.exe', 'User guide.txt', 'iaddons.gif', 'ichannels.gif', 'itrans.gif', 'uaddons.gif',
  'uchannels.gif', 'utrans.gif',
];

let user;
let folder;
let startMenu;
let filesBefore;
let keysBefore;
let kitbay;

/**
 * Every file and folder of drive C but those of the sample suite and its user, and temporary files: the
 * uninstaller runs from a copy there, which Windows deletes at its next start. Names that begin with
 * "." are the browser's, in the home folder that Wine links to.
 */
const filesOfDrive = () =>
  fs
    .readdirSync(driveC, { recursive: true })
    .filter((name) => !/^(Program Files\/Ovalink|users\/[^/]*\/AppData\/Roaming\/Ovalink)(\/|$)/.test(name))
    .filter((name) => !/^(users\/[^/]*\/(AppData\/Local\/)?Temp|windows\/temp)\/|\/\./i.test(name))
    .sort();

/** The user's keys with their values, and those of all classes, without the suite's own key. */
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

before(async () => {
  await run(path.join(root, 'tools/wine_prefix'), ['--stop'], { env: process.env });
  fs.rmSync(prefix, { recursive: true, force: true });
  await run(path.join(root, 'tools/make_installer'), ['x64']);
  await run(path.join(root, 'tools/wine_prefix'), [], { env: process.env });
  // The prefix of the tests has the objects of the build; the installer is to bring its own.
  await wine('regsvr32', '/s', '/u', path.join(buildFolder, 'suite/OvalinkSuite.dll'));
  await Suite.layOut();
  const users = path.join(driveC, 'users');
  user = path.join(users, fs.readdirSync(users).find((name) => name !== 'Public'));
  folder = path.join(user, 'AppData/Local/Programs/Kitbay');
  startMenu = path.join(user, 'AppData/Roaming/Microsoft/Windows/Start Menu/Programs');
  filesBefore = filesOfDrive();
  keysBefore = await keysOfUser();
});
after(async () => {
  await kitbay?.dispose();
  await run(path.join(root, 'tools/wine_prefix'), ['--stop'], { env: process.env });
});

test('a silent installation puts the program where the user may write, and enters it', async () => {
  await wine(installer, '/S');
  assert.deepEqual(fs.readdirSync(folder).sort(), [...files].sort());
  const entry = await values(uninstallKey);
  const place = windowsPath(folder);
  assert.equal(entry.DisplayName, 'Kitbay');
  assert.match(entry.DisplayVersion, /^\d+\.\d+\.\d+$/);
  assert.equal(entry.InstallLocation, place);
  assert.equal(entry.QuietUninstallString, `"${place}\\Uninstall.exe" /S`);
});

test('the program that the shortcut names lists what is installed', async () => {
  const link = fs.readFileSync(path.join(startMenu, 'Kitbay.lnk'));
  const target = link.toString('latin1').match(/C:\\[ -~]*?Kitbay\.exe/)[0];
  kitbay = Program.start(path.join(driveC, ...target.slice(3).split('\\')));
  const page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
  const rows = await page.eval(rowsOf('installedchannels'));
  assert.equal(rows[4].name, 'Recipe of the Day');
});

test('nothing is removed while the program runs', async () => {
  // Told its place, it works there instead of starting a copy of itself, and gives its exit code.
  await assert.rejects(wine(path.join(folder, 'Uninstall.exe'), '/S', `_?=${windowsPath(folder)}`), { code: 2 });
  assert.deepEqual(fs.readdirSync(folder).sort(), [...files].sort());
  assert.equal(await kitbay.close(), 0);
  await eventually('the end of the window', async () => !(await windows()).some(isKitbay));
});

test('a silent removal leaves the files and keys of before', async () => {
  await wine(path.join(folder, 'Uninstall.exe'), '/S');
  await eventually('the end of the folder', () => !fs.existsSync(folder));
  const programs = path.dirname(folder);
  assert.deepEqual(
    filesOfDrive().filter((name) => path.join(driveC, name) !== programs),
    filesBefore.filter((name) => path.join(driveC, name) !== programs),
  );
  assert.deepEqual(await keysOfUser(), keysBefore);
});

test("a file of the user's in the program's folder stays", async () => {
  await wine(installer, '/S');
  fs.writeFileSync(path.join(folder, 'install.txt'), 'my own\r\n');
  await wine(path.join(folder, 'Uninstall.exe'), '/S');
  await eventually('the end of the program', () => fs.readdirSync(folder).length === 1);
  assert.deepEqual(fs.readdirSync(folder), ['install.txt']);
});
