import { spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { setTimeout as delay } from 'node:timers/promises';
import { DevToolsPipe } from './devtools_pipe.mjs';

// The program itself, not the distribution's script that starts it. It has Chromium's engine without its
// windows, starts with a third of the work, and draws only when it is told to.
const kProgram = '/usr/lib/chromium/chromium-headless-shell';

// A loopback port on which nothing listens: whatever gets past every other guard ends here.
const kNoProxy = 'http://127.0.0.1:1';

const kRemovals = 40;

const kArguments = [
  '--disable-gpu', '--enable-begin-frame-control', '--run-all-compositor-stages-before-draw',
  '--disable-quic', '--no-first-run', '--disable-background-networking',
  '--disable-component-update', '--disable-sync', '--disable-extensions', '--disable-default-apps',
  '--disable-breakpad', '--disable-crash-reporter', '--dns-prefetch-disable', '--mute-audio',
  '--host-resolver-rules=MAP * ~NOTFOUND', `--proxy-server=${kNoProxy}`,
  '--proxy-bypass-list=<-loopback>', '--remote-debugging-pipe',
];

function programPath() {
  const program = process.env.WEB_BROWSER_STANDIN_CHROMIUM ?? kProgram;
  if (!fs.existsSync(program)) throw new Error("Chromium's headless shell is not installed");
  return program;
}

/** A headless Chromium with its own profile and temporary files, driven over pipes. */
export class Chromium {
  #process;
  #folder;
  #ended;

  constructor() {
    this.#folder = fs.mkdtempSync(path.join(os.tmpdir(), 'web-browser-standin-'));
    const options = [...kArguments, `--user-data-dir=${path.join(this.#folder, 'profile')}`];
    if (process.getuid() === 0) options.push('--no-sandbox');
    this.#process = spawn(programPath(), options,
      { stdio: ['ignore', 'ignore', 'ignore', 'pipe', 'pipe'], detached: true,
        env: { ...process.env, TMPDIR: this.#folder, DISPLAY: undefined } });
    this.#process.on('error', () => {});  // A failed start appears as the end of the pipe.
    this.#ended = once(this.#process, 'exit').catch(() => {});
    const [, , , output, input] = this.#process.stdio;
    this.pipe = new DevToolsPipe(output, input);
  }

  get processId() {
    return this.#process.pid;
  }

  /** Ends the browser and removes its files. */
  async close() {
    this.#killAll();
    await this.#ended;
    // Its child processes may still write for a moment after the browser has ended.
    for (let left = kRemovals; left > 0 && !this.#removeFolder(); left -= 1) await delay(50);
  }

  /** The same as far as possible at once, for the end of this process. */
  kill() {
    this.#killAll();
    this.#removeFolder();
  }

  #killAll() {
    try {
      process.kill(-this.#process.pid, 'SIGKILL');
    } catch {
      // It has ended already.
    }
  }

  #removeFolder() {
    try {
      fs.rmSync(this.#folder, { recursive: true, force: true });
      return true;
    } catch {
      return false;
    }
  }
}
