import { EventEmitter, once } from 'node:events';

/** Pictures of the page as it changes. Emits 'frame' {n, data}: a number and a PNG in base64. */
export class Frames extends EventEmitter {
  #page;
  #last = 0;
  #size = { width: 800, height: 600 };
  #zoom = 1;
  #running = false;
  #paused = false;
  #turn = Promise.resolve();
  #captures = 0;
  #capture = Promise.resolve();

  constructor(page) {
    super();
    this.#page = page;
    page.listen('Page.screencastFrame', ({ data, sessionId }) => {
      // Acknowledged at once: a host that is slow to paint gets the newest picture later.
      page.send('Page.screencastFrameAck', { sessionId }).catch(() => {});
      if (this.#zoom === 1) this.#emit(data);
      else this.#captureZoomed();
    });
  }

  /** How many pixels of the screen one pixel of the page takes. */
  get zoom() {
    return this.#zoom;
  }

  /** The number of the newest picture. */
  get last() {
    return this.#last;
  }

  /** Gives the page another size in screen pixels, and another zoom. */
  async resize(width, height, zoom = 1) {
    if (width < 1 || height < 1) return;
    this.#size = { width, height };
    this.#zoom = zoom;
    await this.#page.sendAfterTurn('Emulation.setDeviceMetricsOverride', {
      width: Math.round(width / zoom), height: Math.round(height / zoom), deviceScaleFactor: zoom, mobile: false,
    });
    if (!this.#running || this.#paused) return;
    await this.#page.send('Page.stopScreencast');
    await this.start();
  }

  #emit(data) {
    this.#last += 1;
    this.emit('frame', { n: this.#last, data });
  }

  /**
   * The browser's own pictures show the page without its zoom. A picture that arrives during a
   * capture requests another capture.
   */
  #captureZoomed() {
    this.#captures += 1;
    if (this.#captures > 1) return;
    this.#capture = (async () => {
      for (let taken = 0; taken !== this.#captures; ) {
        taken = this.#captures;
        const { data } = await this.#page.sendInTurn('Page.captureScreenshot', { format: 'png' });
        this.#emit(data);
      }
    })().catch(() => {}).finally(() => (this.#captures = 0));
  }

  /** Starts; a fresh picture comes first, even if the page does not change. */
  async start() {
    this.#running = true;
    await this.#page.send('Page.startScreencast', {
      format: 'png', maxWidth: this.#size.width, maxHeight: this.#size.height, everyNthFrame: 1,
    });
  }

  /** Resolves with the number of a picture of the page as it is now, or later. */
  fresh() {
    return this.#inTurn(() => this.#takeAnother());
  }

  /**
   * Takes no pictures until resume(); resolves when none is on its way. Meanwhile the browser does not
   * lay out the page for them, though the page counts as visible: on a page of thousands of rows, each
   * layout visits all of them.
   */
  async pause() {
    if (this.#paused || !this.#running) return;
    this.#paused = true;
    await this.#inTurn(async () => {
      await this.#page.send('Page.stopScreencast');
      await this.#capture;
      await this.#showWindow('minimized');
    });
  }

  /** Takes pictures again, first one of the page as it is then. */
  async resume() {
    if (this.#paused) await this.#inTurn(() => this.#restart());
  }

  #inTurn(action) {
    const result = this.#turn.then(action);
    this.#turn = result.catch(() => {});
    return result;
  }

  /** After the stop, no earlier picture is still on its way. */
  async #takeAnother() {
    await this.#page.send('Page.stopScreencast');
    await this.#capture;
    const frame = once(this, 'frame');
    if (this.#paused) await this.#restart();
    else await this.start();
    const [{ n }] = await frame;
    return n;
  }

  async #restart() {
    if (!this.#paused) return;
    await this.#showWindow('normal');
    this.#paused = false;
    await this.start();
  }

  async #showWindow(windowState) {
    const { windowId } = await this.#page.send('Browser.getWindowForTarget');
    await this.#page.send('Browser.setWindowBounds', { windowId, bounds: { windowState } });
  }
}
