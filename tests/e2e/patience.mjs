// How long a test waits for what it needs.
import { setTimeout as delay } from 'node:timers/promises';

/** For everything that one test, or one of its hooks, waits for: enough even on a busy machine. */
const kLimitMs = 5 * 60 * 1000;
const kPauseMs = 50;

export class Patience {
  #limitMs;
  #end;

  constructor(limitMs = kLimitMs) {
    this.#limitMs = limitMs;
    this.begin();
  }

  /** From now on the whole time is available again. */
  begin() {
    this.#end = Date.now() + this.#limitMs;
  }

  /** The remaining milliseconds. */
  get left() {
    return Math.max(0, this.#end - Date.now());
  }

  /**
   * Returns the result of `look` as soon as it is true; asks repeatedly, for cases without
   * notification.
   */
  async until(what, look) {
    for (;;) {
      const found = await this.#inTime(what, look);
      if (found) return found;
      if (this.left === 0) throw new Error(`Not in time: ${what}`);
      await delay(kPauseMs);
    }
  }

  /** The result of `look`; if it fails because the time is up, the error says what was waited for. */
  async #inTime(what, look) {
    try {
      return await look();
    } catch (error) {
      throw this.left === 0 ? new Error(`Not in time: ${what} (${error.message})`) : error;
    }
  }

  /** Returns the value of `promise`, if that is in time. */
  async awaited(what, promise) {
    let timer;
    const late = new Promise((_, reject) => {
      timer = setTimeout(() => reject(new Error(`Not in time: ${what}`)), this.left);
    });
    try {
      return await Promise.race([promise, late]);
    } finally {
      clearTimeout(timer);
    }
  }
}
