// Asks the probe program, tests/e2e/probe, which describes the questions.
import { once } from 'node:events';
import { createInterface } from 'node:readline';

/** The probe has ended before it answered. */
class ProbeEnded extends Error {}

/** One running probe, which answers one question at a time. It ends with this process, or with Wine. */
class Probe {
  #process;
  #errors = '';
  #waiting = null;
  hasEnded = false;

  constructor(start) {
    this.#process = start({ stdio: 'pipe' });
    const { stdin, stdout, stderr } = this.#process;
    // The test's process does not wait for the end of its probe.
    for (const held of [this.#process, stdin, stdout, stderr]) held.unref();
    stdin.on('error', () => {});  // It has ended.
    stderr.on('data', (text) => (this.#errors += text));
    createInterface(stdout).on('line', (line) => this.#answered(line));
    once(this.#process, 'exit').then(([code]) => this.#ended(code));
  }

  get isIdle() {
    return this.#waiting === null && !this.hasEnded;
  }

  ask(words) {
    this.#process.stdin.write(`${JSON.stringify(words)}\n`);
    return new Promise((resolve, reject) => (this.#waiting = { words, resolve, reject }));
  }

  end() {
    this.hasEnded = true;
    this.#process.kill();
  }

  #answered(line) {
    // Wine describes a crash there too.
    if (!line.startsWith('{')) {
      this.#errors += `${line}\n`;
      return;
    }
    const { words, resolve, reject } = this.#waiting;
    this.#waiting = null;
    const { value, error } = JSON.parse(line);
    if (error === undefined) resolve(value);
    else reject(new Error(`${words.join(' ')}: ${error}`));
  }

  #ended(code) {
    this.hasEnded = true;
    if (this.#errors !== '') console.error(`The probe said: ${this.#errors}`);
    this.#waiting?.reject(new ProbeEnded(`The probe has ended with ${code}`));
  }
}

/** Keeps as many probes running as there are questions at once; `start` (with the options of a process) starts one. */
export class ProbeClient {
  #start;
  #probes = [];

  constructor(start) {
    this.#start = start;
  }

  /** The answer to a question, within `limit`. */
  async ask(words, limit) {
    try {
      return await this.#askOnce(this.#idleProbe(), words, limit);
    } catch (error) {
      // Somebody has ended Wine since the last question, and with it every probe.
      if (error instanceof ProbeEnded) return this.#askOnce(this.#newProbe(), words, limit);
      throw error;
    }
  }

  async #askOnce(probe, words, limit) {
    return limit.awaited(words.join(' '), probe.ask(words)).catch((error) => {
      if (limit.left === 0) probe.end();
      throw error;
    });
  }

  #idleProbe() {
    this.#probes = this.#probes.filter(({ hasEnded }) => !hasEnded);
    return this.#probes.find(({ isIdle }) => isIdle) ?? this.#newProbe();
  }

  #newProbe() {
    const probe = new Probe(this.#start);
    this.#probes.push(probe);
    return probe;
  }
}
