import { EventEmitter } from 'node:events';

/** Pictures of the page as it changes. Emits 'frame' {n, data}: a number and a PNG in base64. */
export class Frames extends EventEmitter {
  #page;
  #last = 0;
  #size = { width: 800, height: 600 };
  #running = false;

  constructor(page) {
    super();
    this.#page = page;
    page.listen('Page.screencastFrame', ({ data, sessionId }) => {
      // Acknowledged at once: a host that is slow to paint takes the newest picture later.
      page.send('Page.screencastFrameAck', { sessionId }).catch(() => {});
      this.#last += 1;
      this.emit('frame', { n: this.#last, data });
    });
  }

  /** The number of the newest picture. */
  get last() {
    return this.#last;
  }

  /** Gives the page another size in pixels. */
  async resize(width, height) {
    if (width < 1 || height < 1) return;
    this.#size = { width, height };
    await this.#page.send('Emulation.setDeviceMetricsOverride',
      { width, height, deviceScaleFactor: 1, mobile: false });
    if (this.#running) await this.restart();
  }

  /** Begins; a fresh picture comes first, whether or not the page changes. */
  async start() {
    this.#running = true;
    await this.#page.send('Page.startScreencast', {
      format: 'png', maxWidth: this.#size.width, maxHeight: this.#size.height, everyNthFrame: 1,
    });
  }

  /** Asks for a fresh picture of the page as it is now. */
  async restart() {
    await this.#page.send('Page.stopScreencast');
    await this.start();
  }

  /** Resolves with the number of the first picture after the present one. */
  next() {
    return new Promise((resolve) => this.once('frame', ({ n }) => resolve(n)));
  }
}
