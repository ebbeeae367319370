// Drives the real program as its user does: under Wine, in a window, with the mouse and the keyboard.
import { execFile, spawn } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { once } from 'node:events';
import { promisify } from 'node:util';
import { fileURLToPath } from 'node:url';
import { PageInspector } from '../../standins/web_browser/helper/inspect_client.mjs';

const run = promisify(execFile);
export const root = fileURLToPath(new URL('../..', import.meta.url)).replace(/\/$/, '');
const build = path.join(root, 'build/win64');
const probeProgram = path.join(build, 'tests/e2e/probe/e2e_probe.exe');
const prefix = process.env.WINEPREFIX?.startsWith(`${root}/build/`)
  ? process.env.WINEPREFIX
  : path.join(root, 'build/wine');
const environment = { ...process.env, WINEPREFIX: prefix };
export const prefixFolder = prefix;
export const downloadClient =
  process.env.KITBAY_DOWNLOAD_CLIENT ?? path.join(build, 'tests/e2e/download_client/download_client.exe');

const driveC = path.join(prefix, 'drive_c');
const suiteFolder = 'Program Files/Ovalink';
const uninstallKey = 'HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall';

/** What `look` gives as soon as it is true; asks again and again, since Windows tells nobody here. */
export async function eventually(what, look, timeoutMs = 20000) {
  const limit = Date.now() + timeoutMs;
  for (;;) {
    const found = await look();
    if (found) return found;
    if (Date.now() > limit) throw new Error(`Not in time: ${what}`);
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
}

/** Runs a Windows program of Wine's own or of the build, and gives what it printed. */
export async function wine(...words) {
  const { stdout } = await run(path.join(root, 'tools/wine_run'), words, { env: environment });
  return stdout;
}

/** What the probe program says to a command, as a value. */
export async function probe(...words) {
  return JSON.parse(await wine(probeProgram, ...words));
}

/** The visible top-level windows, from the top of the screen down. */
export const windows = () => probe('windows');

/** The first window that `fits`, as soon as there is one. */
export async function windowWhere(what, fits) {
  return eventually(what, async () => (await windows()).find(fits));
}

export const isKitbay = (window) => window.class === 'KitbayMainWindow';

function usersFolder() {
  const users = path.join(driveC, 'users');
  return path.join(users, fs.readdirSync(users).find((name) => name !== 'Public'));
}

/** Presses OK in the program's message box, and gives the text that it showed. */
export async function confirmMessage() {
  const box = await windowWhere('a message', (window) => window.class === '#32770');
  await probe('press', box.caption, 'OK');
  await eventually('the end of the message', async () =>
    (await windows()).every((window) => window.class !== '#32770'),
  );
  return box.controls.filter((control) => control.class === 'Static').map(({ text }) => text).join('');
}

/** A fresh installation of the sample suite. */
export class Suite {
  folder = path.join(driveC, suiteFolder);
  windowsFolder = `C:\\${suiteFolder.replaceAll('/', '\\')}`;
  log = path.join(this.folder, 'KitbayLog.log');
  datastore = path.join(this.folder, 'Datastore/olregistry.xml');
  programFolder = path.join(this.folder, 'Kitbay');
  userFolder = path.join(usersFolder(), 'AppData/Roaming/Ovalink');

  static async layOut(settings = {}) {
    await run(path.join(root, 'standins/sample_suite/lay_out'), [suiteFolder, build], {
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

  /** The files in the folder of cached manifests that are no part of the program. */
  manifests() {
    return fs
      .readdirSync(this.programFolder)
      .filter((name) => !/\.(exe|html|gif)$|^DirectoryPreference\.xml$/.test(name));
  }

  /** The log's entries as {time, number, procedure, description}; fails where a line has another form. */
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

  async deleteUninstallEntry(key) {
    await wine('reg', 'delete', `${uninstallKey}\\${key}`, '/f');
  }

  start() {
    return Program.start(path.join(this.programFolder, 'Kitbay.exe'));
  }
}

/** One running instance of a Windows program. */
export class Program {
  #process;
  #ended;
  #inspector = null;
  #isKitbay;
  #scratch = fs.mkdtempSync(path.join(os.tmpdir(), 'kitbay-e2e-'));

  static start(file) {
    return new Program(file);
  }

  constructor(file) {
    this.#isKitbay = file.endsWith('Kitbay.exe');
    this.#process = spawn(path.join(root, 'tools/wine_run'), [file], {
      env: { ...environment, WEB_BROWSER_STANDIN_INSPECT: path.join(this.#scratch, 'inspect.json') },
      stdio: 'ignore',
    });
    this.#ended = once(this.#process, 'exit').then(([code]) => code);
  }

  /** The exit code, when the program has ended. */
  async ended(timeoutMs = 20000) {
    const limit = new AbortController();
    const late = new Promise((_, reject) => {
      const timer = setTimeout(() => reject(new Error('The program did not end')), timeoutMs);
      limit.signal.addEventListener('abort', () => clearTimeout(timer));
    });
    try {
      return await Promise.race([this.#ended, late]);
    } finally {
      limit.abort();
    }
  }

  get isRunning() {
    return this.#process.exitCode === null && this.#process.signalCode === null;
  }

  /** The page of the program's browser control. */
  async page() {
    this.#inspector ??= await PageInspector.connect(path.join(this.#scratch, 'inspect.json'));
    return this.#inspector;
  }

  /** Clicks in the middle of an element of the page, with the mouse. */
  async click(selector, index = 0) {
    const page = await this.page();
    await page.settled();
    const { x, y } = await page.middle(selector, index);
    await run('xdotool', ['mousemove', String(x), String(y), 'click', '1']);
    await page.settled();
  }

  /** Ends the program if a failed test left it running, and tidies up. */
  async dispose() {
    this.#inspector?.close();
    // A program that is killed takes no leave of COM, and Wine then offers its dead class objects.
    if (this.isRunning && this.#isKitbay) {
      await probe('press', 'Kitbay', '&Close').then(() => this.ended(5000)).catch(() => {});
    }
    if (this.isRunning) {
      this.#process.kill('SIGTERM');
      await this.#ended;
    }
    fs.rmSync(this.#scratch, { recursive: true, force: true });
  }
}

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
