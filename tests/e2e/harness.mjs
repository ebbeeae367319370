// Drives the real program as its user does: under Wine, in a window, with the mouse and the
// keyboard.
//
// Nothing here depends on how soon a busy program answers. A step waits for the state that it
// needs, a question to a window waits until it is answered, and the page is read while the program
// waits for messages. All of that shares the one limit that each test has. What the programs print
// goes into the report.
import assert from 'node:assert/strict';
import { execFile, spawn, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { once } from 'node:events';
import { beforeEach } from 'node:test';
import { promisify } from 'node:util';
import { fileURLToPath } from 'node:url';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { PageInspector } from '../../standins/web_browser/helper/inspect_client.mjs';
import { windowsBuild, winePrefix } from '../../tools/windows_build.mjs';
import { Patience } from './patience.mjs';
import { ProbeClient } from './probe_client.mjs';
import { canonicalXml } from './xml.mjs';

export const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
export const buildFolder = windowsBuild;
// Longer than a test file takes: a file keeps one program for all its tests and ends it itself.
const kProgramLimitSeconds = 3600;
const probeProgram = path.join(buildFolder, 'tests/e2e/probe/e2e_probe.exe');
export const prefixFolder = winePrefix();
const environment = { ...process.env, WINEPREFIX: prefixFolder };
export const downloadClient =
  process.env.KITBAY_DOWNLOAD_CLIENT ?? path.join(buildFolder, 'tests/e2e/download_client/download_client.exe');

const driveC = path.join(prefixFolder, 'drive_c');
const suiteFolder = 'Program Files/Ovalink';
const uninstallKey = 'HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall';

/** Folders for what programs print; those that a failed test leaves disappear with this process. */
const scratchFolders = new Set();
process.once('exit', () => scratchFolders.forEach(removeScratchFolder));

function newScratchFolder() {
  const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'kitbay-e2e-'));
  scratchFolders.add(folder);
  return folder;
}

function removeScratchFolder(folder) {
  fs.rmSync(folder, { recursive: true, force: true });
  scratchFolders.delete(folder);
}

export const patience = new Patience();
// The story of ./demo is not a test; it starts its parts itself.
if (process.argv[1]?.endsWith('.test.mjs')) beforeEach(() => patience.begin());

/**
 * Returns the result of `look` as soon as it is true; asks repeatedly, because Windows notifies
 * nobody here.
 */
export const eventually = (what, look) => patience.until(what, look);

/** An error with what a program has printed. */
const saying = (what, ...said) =>
  new Error([what, ...said.map((text) => String(text).trim()).filter(Boolean)].join('\n'));

/**
 * Runs a program of this system and returns its standard output; if it fails, the error has what it
 * printed.
 */
export async function run(program, words = [], options = {}) {
  try {
    return (await promisify(execFile)(program, words, options)).stdout;
  } catch ({ code, stdout, stderr }) {
    throw saying(`${[program, ...words].join(' ')} ended with ${code}`, stdout, stderr);
  }
}

/** Runs a Windows program of Wine's own or of the build, and returns what it printed. */
export async function wine(...words) {
  // Through files, not pipes: the first program also starts Wine's server, which keeps the handles
  // it inherited open for as long as any program runs.
  const folder = newScratchFolder();
  const [output, errors] = ['output', 'errors'].map((name) => path.join(folder, name));
  const said = () => [output, errors].map((file) => fs.readFileSync(file, 'utf8'));
  const stdio = ['ignore', fs.openSync(output, 'w'), fs.openSync(errors, 'w')];
  const child = spawn(path.join(root, 'tools/wine_run'), words, { env: environment, stdio });
  try {
    const [code] = await patience.awaited(words.join(' '), once(child, 'exit')).catch((error) => {
      throw saying(error.message, ...said());
    });
    if (code !== 0) throw Object.assign(saying(`${words.join(' ')} ended with ${code}`, ...said()), { code });
    return said()[0];
  } finally {
    child.kill();
    stdio.slice(1).forEach((file) => fs.closeSync(file));
    removeScratchFolder(folder);
  }
}

const probes = new ProbeClient((options) =>
  spawn(path.join(root, 'tools/wine_run'), ['--input', probeProgram],
    { env: { ...environment, KITBAY_TIME_LIMIT: kProgramLimitSeconds }, ...options }));

/** The probe program's answer to a question, as a value. */
export const probe = (...words) => probeWithin(patience, ...words);
/** The same within another limit than that of the test. */
export const probeWithin = (limit, ...words) => probes.ask(words, limit);

/** The visible top-level windows, topmost first. */
export const windows = () => probe('windows');

/** The first window that `fits`, as soon as there is one. */
export async function windowWhere(what, fits) {
  return eventually(what, async () => (await windows()).find(fits));
}

export const isKitbay = (window) => window.class === 'KitbayMainWindow';

/** The Windows name of a path below drive C. */
export const windowsPath = (file) => `C:\\${path.relative(driveC, file).replaceAll('/', '\\')}`;

function usersFolder() {
  const users = path.join(driveC, 'users');
  return path.join(users, fs.readdirSync(users).find((name) => name !== 'Public'));
}

/** The message boxes that are open. */
export const messages = async () => (await windows()).filter((window) => window.class === '#32770');

/** Answers the program's message box, the topmost of several, and returns the text that it showed. */
export async function confirmMessage(button = 'OK') {
  const box = await windowWhere('a message', (window) => window.class === '#32770');
  await probe('answer', String(box.id), button);
  await eventually('the end of the message', async () => (await windows()).every(({ id }) => id !== box.id));
  return box.controls.filter((control) => control.class === 'Static').map(({ text }) => text).join('');
}

/** Why a file does not conform to its schema; "" if it does, or does not exist. */
export function whatIsInvalid(file) {
  if (!fs.existsSync(file)) return '';
  const { status, stdout } = spawnSync(path.join(root, 'tools/check_schemas'), [file], { encoding: 'utf8' });
  return status === 0 ? '' : stdout;
}

/** A fresh installation of the sample suite. */
export class Suite {
  folder = path.join(driveC, suiteFolder);
  windowsFolder = windowsPath(this.folder);
  log = path.join(this.folder, 'KitbayLog.log');
  datastore = path.join(this.folder, 'Datastore/olregistry.xml');
  programFolder = path.join(this.folder, 'Kitbay');
  userFolder = path.join(usersFolder(), 'AppData/Roaming/Ovalink');
  customRegistry = path.join(this.userFolder, 'CustomData/customregistry.xml');
  workingFolder = path.join(this.folder, 'Temp');

  static async layOut(settings = {}) {
    await run(path.join(root, 'standins/sample_suite/lay_out'), [suiteFolder, buildFolder], {
      env: { ...environment, ...settings },
    });
    return new Suite();
  }

  write(name, content) {
    const file = path.join(this.folder, name);
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.writeFileSync(file, content);
  }

  /** Lists further update sources of the user after the installation's own. */
  addSources(...urls) {
    const items = ['', ...urls].map((url) => `<preference url='${url}'/>`).join('');
    fs.mkdirSync(this.userFolder, { recursive: true });
    fs.writeFileSync(
      path.join(this.userFolder, 'updatepreference.xml'),
      `<root><preferences>${items}</preferences></root>`,
    );
  }

  /** The contents of both registry files, the datastore first. */
  registryFiles() {
    return [this.datastore, this.customRegistry].map((file) => fs.readFileSync(file, 'utf8'));
  }

  /**
   * Demands that the registry files are what `change` (of canonical XML and a file's place) makes
   * of their previous contents, and byte for byte as before if it changes nothing.
   */
  demandRegistryFiles(before, change) {
    this.registryFiles().forEach((text, file) => {
      const was = canonicalXml(before[file]);
      const expected = change(was, file);
      if (expected === was) assert.equal(text, before[file]);
      else assert.equal(canonicalXml(text), expected);
    });
  }

  /** The files in the folder of cached manifests that do not belong to the program. */
  manifests() {
    return fs
      .readdirSync(this.programFolder)
      .filter((name) => !/^tabs$|\.(exe|dll|manifest|html|gif)$|^DirectoryPreference\.xml$/.test(name));
  }

  /**
   * The log's entries as {time, number, procedure, description}; fails if a line has another form.
   */
  logEntries() {
    const lines = fs.readFileSync(this.log, 'utf8').split('\r\n');
    if (!/^Log Date :\d/.test(lines[0]) || lines.pop() !== '') throw new Error('The log has no header');
    const entries = [];
    for (let i = 1; i < lines.length; i += 4) {
      const form = [
        /^(=-){45}=$/,
        /^\[(.*)\] {3}\[(-?\d+)\]$/,
        /^ {25}\[Source:- {2}(.*)\]$/,
        /^ {25}\[Description:- {2}(.*)\]$/,
      ];
      const parts = form.map((line, k) => line.exec(lines[i + k] ?? ''));
      if (parts.includes(null)) throw new Error(`No entry at line ${i + 1} of the log`);
      entries.push({
        time: parts[1][1],
        number: Number(parts[1][2]),
        procedure: parts[2][1],
        description: parts[3][1],
      });
    }
    return entries;
  }

  async setUninstallEntry(key, values) {
    for (const [name, data] of Object.entries(values)) {
      await wine('reg', 'add', `${uninstallKey}\\${key}`, '/v', name, '/d', data, '/f');
    }
  }

  /** Moves the entry to the view of the registry for 32-bit programs. */
  async moveUninstallEntryTo32() {
    const values = { InstallLocation: this.windowsFolder, Displayname: 'Tessel', ApplicationEXE: 'Tessel.exe' };
    await this.deleteUninstallEntry('Tessel');
    for (const [name, data] of Object.entries(values)) {
      await wine('reg', 'add', `${uninstallKey}\\Tessel`, '/v', name, '/d', data, '/f', '/reg:32');
    }
  }

  async deleteUninstallEntry(key) {
    await wine('reg', 'delete', `${uninstallKey}\\${key}`, '/f');
  }

  /** Starts the program. A file that is valid now, or is not there, must be valid once its user has closed it. */
  start() {
    const saved = [this.datastore, this.customRegistry, path.join(this.userFolder, 'updatepreference.xml')];
    const watched = saved.filter((file) => whatIsInvalid(file) === '');
    const program = Program.start(path.join(this.programFolder, 'Kitbay.exe'));
    program.whenClosed = () => assert.deepEqual(watched.map(whatIsInvalid).filter(Boolean), []);
    return program;
  }
}

/** The main client of a suite: started by a test, or by Kitbay. */
export class MainClient {
  static isWindow = (window) => window.class === 'ThunderRT6FormDC' && window.caption === 'OvlTessel';
  #suite;
  #started = [];

  constructor(suite) {
    this.#suite = suite;
  }

  /** What the client's own log contains so far: "started" and "closed", in order. */
  events() {
    const log = path.join(this.#suite.folder, 'Tessel.log');
    if (!fs.existsSync(log)) return [];
    return fs.readFileSync(log, 'utf8').split('\r\n').slice(0, -1).map((line) => line.split(' ')[0]);
  }

  /** Waits for the `count`th event. */
  async event(count, what) {
    await eventually(`${what} (${this.events()})`, () => this.events().length >= count);
  }

  /** How many clients show their window. */
  async count() {
    return (await windows()).filter(MainClient.isWindow).length;
  }

  async start() {
    const before = this.events().length;
    this.#started.push(Program.start(path.join(this.#suite.folder, 'Tessel.exe')));
    await this.event(before + 1, 'the start of the main client');
  }

  /** Closes every client that is running. */
  async close() {
    while ((await this.count()) > 0) {
      const before = this.events().length;
      await probe('close', 'ThunderRT6FormDC', 'OvlTessel');
      await this.event(before + 1, 'the end of the main client');
    }
    for (const program of this.#started.splice(0)) await program.dispose();
  }
}

/** Makes the machine trust the authority that signs the sample update source's certificates. */
export async function trustAuthority() {
  const folder = newScratchFolder();
  const entry = path.join(folder, 'authority.reg');
  fs.writeFileSync(entry, UpdateSource.certificates().registryEntry);
  await wine('C:\\windows\\regedit.exe', '/S', `Z:${entry.replaceAll('/', '\\')}`);
  removeScratchFolder(folder);
}

/** The library registered for a component's class; null if there is none. */
export async function registeredLibrary(progId) {
  try {
    const { text: clsid } = await probe('value', `${progId}\\CLSID`, '');
    return (await probe('value', `CLSID\\${clsid}\\InprocServer32`, '')).text;
  } catch {
    return null;
  }
}

/** Where each thread of the running programs is, as Wine's debugger tells. */
export async function threadsOfPrograms() {
  const threads = (await wine('winedbg', '--command', 'bt all')).split(/\r?\n\r?\n/);
  const isOurs = (thread) => thread.startsWith('Backtracing') && !/c:\\windows\\/i.test(thread);
  return threads.filter(isOurs).join('\n\n');
}

const kFarewellMs = 30000;

/** Starts programs in other ways; tests/e2e/starter describes the words. */
export const starter = path.join(buildFolder, 'tests/e2e/starter/starter.exe');

/** One running instance of a Windows program. */
export class Program {
  #process;
  #ended;
  #inspector = null;
  #name;
  #scratch = newScratchFolder();

  /** What happens once the program's user has closed it. */
  whenClosed = () => {};

  static start(file, ...words) {
    return new Program(file, words);
  }

  constructor(file, words) {
    this.#name = path.basename(file);
    const output = fs.openSync(this.#file('output'), 'a');
    const isElevated = process.env.KITBAY_RIGHTS === 'elevated' && file !== starter;
    const command = isElevated ? [starter, '--elevated', windowsPath(file)] : [file, ...words];
    this.#process = spawn(path.join(root, 'tools/wine_run'), command, {
      env: {
        ...environment,
        KITBAY_TIME_LIMIT: kProgramLimitSeconds,
        WEB_BROWSER_STANDIN_INSPECT: this.#file('inspect.json'),
        WEB_BROWSER_STANDIN_LOG: this.#file('browser'),
      },
      stdio: ['ignore', output, output],
    });
    fs.closeSync(output);
    this.#ended = once(this.#process, 'exit').then(([code]) => code);
  }

  #file(name) {
    return path.join(this.#scratch, name);
  }

  /** What the program, and the browser of its page, have printed. */
  #said() {
    return ['output', 'browser'].map((name) =>
      fs.existsSync(this.#file(name)) ? fs.readFileSync(this.#file(name), 'utf8') : '');
  }

  /** The exit code, once the program has ended. */
  async ended() {
    return patience.awaited(`the end of ${this.#name}`, this.#ended);
  }

  get isRunning() {
    return this.#process.exitCode === null && this.#process.signalCode === null;
  }

  /** Kills only the Windows process, at whatever point it is. */
  kill() {
    this.signal('SIGKILL');
  }

  /** Sends the Windows process one of this system's signals. */
  signal(name) {
    process.kill(this.#windowsProcess(), name);
  }

  // A child of the process that waits for it.
  #windowsProcess() {
    const children = ({ pid }) => fs.readFileSync(`/proc/${pid}/task/${pid}/children`, 'utf8').split(' ').filter(Boolean);
    const [windowsProcess] = children(this.#process).map(Number);
    if (!fs.readFileSync(`/proc/${windowsProcess}/cmdline`, 'utf8').includes(this.#name)) {
      throw new Error(`Process ${windowsProcess} is not ${this.#name}`);
    }
    return windowsProcess;
  }

  /** The processor time used so far by the program and the browser behind its page. */
  processorSeconds() {
    const kTicksPerSecond = 100;
    const processes = new Map();
    for (const pid of fs.readdirSync('/proc').filter((name) => /^\d+$/.test(name))) {
      try {
        const fields = fs.readFileSync(`/proc/${pid}/stat`, 'latin1').replace(/^.*\) /s, '').split(' ');
        const isOwn = fs.readFileSync(`/proc/${pid}/environ`, 'latin1').includes(this.#scratch);
        processes.set(pid, { parent: fields[1], isOwn, ticks: Number(fields[11]) + Number(fields[12]) });
      } catch {
        // The process has ended, or belongs to another user.
      }
    }
    // The browser's own processes overwrite their environment.
    const belongs = (process) => process !== undefined && (process.isOwn || belongs(processes.get(process.parent)));
    const own = [...processes.values()].filter(belongs);
    return own.reduce((sum, { ticks }) => sum + ticks, 0) / kTicksPerSecond;
  }

  /** The page of the program's browser control. */
  async page() {
    this.#inspector ??= await Promise.race([
      PageInspector.connect(this.#file('inspect.json'), () => patience.left).catch((error) => {
        throw saying(error.message, ...this.#said());
      }),
      this.#ended.then((code) => {
        throw saying(`${this.#name} has ended with ${code}`, ...this.#said());
      }),
    ]);
    return this.#inspector;
  }

  /** The same page once the update sources have answered and every list is filled. */
  async answeredPage() {
    const page = await this.page();
    await page.waitFor(sourcesAnswered);
    await page.settled();
    return page;
  }

  /**
   * Clicks in the middle of an element of the page, with the mouse, and waits until the click is
   * handled.
   */
  async click(selector, index = 0) {
    await this.#clickOnly(selector, index);
    await (await this.page()).settled();
  }

  /** The same without waiting for the program, which may ask its user something. */
  async #clickOnly(selector, index = 0) {
    const page = await this.page();
    await page.settled();
    const { x, y } = await page.middle(selector, index);
    const { releases } = await page.taken();
    await run('xdotool', ['mousemove', String(x), String(y), 'click', '1']);
    // On a busy machine the click takes time to pass through the window system.
    await page.hasTaken({ releases: releases + 1 });
  }

  /** Presses and releases a key in the page, which has the focus, and waits until it is handled. */
  async key(code) {
    const page = await this.page();
    const { keys } = await page.taken();
    await probe('key', 'Kitbay', code);
    await page.hasTaken({ keys: keys + 1 });
    await page.settled();
  }

  /**
   * Opens a component's row if it is closed, and clicks one of its buttons. The button may first
   * show a message, which must be answered before the click counts as handled.
   */
  async press(container, name, button) {
    const page = await this.page();
    const place = await page.eval(`[...document.getElementById('${container}').children].findIndex(
      (row) => row.children[0]?.children[0]?.innerText === ${JSON.stringify(name)})`);
    if (place < 0) throw new Error(`No row of ${name} in ${container}`);
    const row = `#${container} > div:nth-child(${place + 1})`;
    const panel = `document.querySelector(${JSON.stringify(row)}).children[1]`;
    const isClosed = `(document.querySelector(${JSON.stringify(row)}).scrollIntoView({ block: 'nearest' }),
      ${panel}.style.display === 'none')`;
    if (await page.eval(isClosed)) await this.click(`${row} > span > font`);
    await page.eval(`${panel}.scrollIntoView({ block: 'nearest' })`);
    await this.#clickOnly(`${row} input[value=${button}]`);
  }

  /** Shows the list of a kind ("addons", "trans" or "channels") in a category ("installed", "update"). */
  async show(category, tab) {
    const page = await this.page();
    const bar = category === 'installed' ? 'itabencloser' : 'tabencloser';
    await this.click(`#${category}`);
    await page.waitFor(`document.getElementById('${bar}').offsetParent !== null`);
    await this.click(`#${bar} #${tab}`);
  }

  /** Closes the program as its user does; returns its exit code. */
  async close() {
    await probe('press', 'Kitbay', '&Close');
    const code = await this.ended();
    this.whenClosed();
    return code;
  }

  /**
   * Ends the program if a failed test left it running, and cleans up. Reports what it printed and, if the test was
   * out of time, where its threads are.
   */
  async dispose() {
    this.#inspector?.close();
    if (this.isRunning && patience.left === 0) {
      patience.begin();
      console.error(await threadsOfPrograms().catch(({ message }) => message));
    }
    // A program that is killed does not unregister from COM, and Wine then offers its dead class
    // objects.
    if (this.isRunning && this.#name === 'Kitbay.exe') {
      const farewell = new Patience(kFarewellMs);
      await probeWithin(farewell, 'press', 'Kitbay', '&Close')
        .then(() => farewell.awaited('the end of Kitbay', this.#ended))
        .catch(() => {});
    }
    if (this.isRunning) {
      this.#process.kill('SIGTERM');
      await this.#ended;
    }
    const said = this.#said().join('').trim();
    if (said !== '') console.error(`${this.#name} said: ${said}`);
    removeScratchFolder(this.#scratch);
  }
}

/** True when the update sources have answered and the Updates control has been enabled. */
export const sourcesAnswered = `document.getElementById('category')?.childNodes[3]?.disabled === false`;

/** True if no button of the page is disabled. */
export const allButtonsOn = `document.querySelectorAll('input:disabled').length === 0`;

/** What the rows of a container show: {name, version, description, buttons, open}. */
export const rowsOf = (container) => `
  [...document.getElementById(${JSON.stringify(container)}).children].slice(1).map((row) => ({
    name: row.children[0].children[0].innerText,
    version: row.children[0].children[1].innerText,
    description: row.children[1].children[0].children[0].textContent.replace(/\\u00a0+$/, ''),
    buttons: [...row.querySelectorAll('input')].map((button) => button.value),
    open: getComputedStyle(row.children[1]).display !== 'none',
  }))`;

/** Leaves a picture of the whole screen in `folder`. */
export async function picture(name, folder = path.join(root, 'build/e2e')) {
  fs.mkdirSync(folder, { recursive: true });
  const file = path.join(folder, `${name}.png`);
  await run('import', ['-window', 'root', file]);
  return file;
}
