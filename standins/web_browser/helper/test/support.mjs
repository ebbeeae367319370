import { once } from 'node:events';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import nodeTest from 'node:test';
import { BrowserPage } from '../browser_page.mjs';
import { Chromium } from '../chromium.mjs';
import { Frames } from '../frames.mjs';
import { LocalFiles } from '../local_files.mjs';

/** A test that fails if it waits for something that does not come. */
export const test = (name, body) => nodeTest(name, { timeout: 120000 }, body);

export const kMethod = 1;
export const kGet = 2;
export const kPut = 4;

/** DLCTL_DLIMAGES | NO_SCRIPTS | NO_JAVA | NO_RUNACTIVEXCTLS | NO_DLACTIVEXCTLS | NO_FRAMEDOWNLOAD */
export const kMarkupOnly = 0x10 | 0x80 | 0x100 | 0x200 | 0x400 | 0x1000;

/** A miniature Wine prefix: drive C: is a folder with the given files. */
export function makePrefix(files) {
  const prefix = fs.mkdtempSync(path.join(os.tmpdir(), 'standin-test-'));
  fs.mkdirSync(path.join(prefix, 'dosdevices'));
  fs.mkdirSync(path.join(prefix, 'drive_c'));
  fs.symlinkSync('../drive_c', path.join(prefix, 'dosdevices', 'c:'));
  for (const [name, content] of Object.entries(files)) {
    const file = path.join(prefix, 'drive_c', name);
    fs.mkdirSync(path.dirname(file), { recursive: true });
    fs.writeFileSync(file, content);
  }
  return prefix;
}

/** One browser with late-bound calls, for a whole test file. */
export class TestBrowser {
  static async start(files = {}) {
    const browser = new TestBrowser();
    browser.prefix = makePrefix(files);
    browser.chromium = new Chromium();
    browser.page = new BrowserPage(browser.chromium.pipe, new LocalFiles(browser.prefix));
    browser.reports = [];
    browser.page.on('report', (text) => browser.reports.push(JSON.parse(text)));
    await browser.page.open();
    browser.frames = new Frames(browser.page);
    await browser.frames.start();
    browser.page.on('beforeNavigate', ({ n, url }) => browser.page.decide(n, browser.cancels(url)));
    return browser;
  }

  /**
   * Holds back the engine's events that `fits` (method, parameters) until release(). `held` resolves with
   * the first.
   */
  holdBack(fits) {
    const { pipe } = this.chromium;
    const { emit } = pipe;
    const events = [];
    let release;
    const held = new Promise((resolve) => {
      pipe.emit = (...event) => {
        if (!fits(...event)) return emit.apply(pipe, event);
        events.push(event);
        resolve();
        return true;
      };
      release = () => {
        pipe.emit = emit;
        for (const event of events.splice(0)) emit.apply(pipe, event);
      };
    });
    return { held, release };
  }

  /** Which navigations the host cancels; tests replace it. */
  cancels = () => false;

  async close() {
    await this.chromium.close();
    fs.rmSync(this.prefix, { recursive: true });
  }

  /** Loads a page, given as markup or as a name below C:\, and resolves when it is complete. */
  async load(page, flags = kMarkupOnly) {
    let name = page;
    if (page.startsWith('<')) {
      name = 'page.html';
      fs.writeFileSync(path.join(this.prefix, 'drive_c', name), page);
    }
    const complete = once(this.page, 'complete');
    this.page.navigate(`C:\\${name}`, flags);
    await complete;
  }

  /** One late-bound call: the answer as the page gave it. */
  async call(object, name, flags, ...args) {
    const request = { h: object.h, n: name, k: flags, a: args };
    return JSON.parse(await this.page.answer(this.page.generation, request));
  }

  async #value(object, name, flags, args) {
    const { v, e, d } = await this.call(object, name, flags, ...args);
    if (e !== undefined) throw new Error(`${name}: 0x${e.toString(16)} ${d}`);
    return v;
  }

  get(object, name, ...args) {
    return this.#value(object, name, kGet, args);
  }

  put(object, name, value) {
    return this.#value(object, name, kPut, [value]);
  }

  invoke(object, name, ...args) {
    return this.#value(object, name, kMethod, args);
  }

  /** The element with an id, through document.all.item, as a host requests it. */
  async byId(id) {
    return this.invoke(await this.get(this.document, 'all'), 'item', id);
  }

  document = { h: 1 };

  /** Presses at one point and releases at another, in page pixels. */
  async click(from, to = from) {
    const event = { button: 'left', clickCount: 1 };
    const dispatch = (type, point) =>
      this.page.send('Input.dispatchMouseEvent', { type, ...point, ...event });
    await dispatch('mousePressed', from);
    if (to !== from) await dispatch('mouseMoved', to);
    await dispatch('mouseReleased', to);
  }
}
