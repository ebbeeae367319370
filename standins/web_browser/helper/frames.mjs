import { EventEmitter } from 'node:events';
import { setTimeout as delay } from 'node:timers/promises';

const kFrameMs = 30;
const kFramesOfRest = 30;

/**
 * Pictures of the page as it changes. The browser draws, and lays the page out for drawing, only when it is
 * told to here, one frame at a time. Emits 'frame' {n, data}: a number and a PNG in base64, or no data for
 * the previous picture once more.
 */
export class Frames extends EventEmitter {
  #page;
  #last = 0;
  #data;
  #framesOfRest = 0;
  #zoom = 1;
  #isPaused = false;
  #turn = Promise.resolve();

  constructor(page) {
    super();
    this.#page = page;
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
    this.#zoom = zoom;
    await this.#page.sendAfterTurn('Emulation.setDeviceMetricsOverride', {
      width: Math.round(width / zoom), height: Math.round(height / zoom), deviceScaleFactor: zoom, mobile: false,
    });
  }

  /** Takes a picture, and further ones when the page has changed, until the browser ends. */
  async start() {
    await this.fresh();
    this.#follow();
  }

  async #follow() {
    for (;;) {
      await delay(kFrameMs, undefined, { ref: false });
      if (!this.#isPaused) await this.#inTurn(() => this.#drawChange()).catch(() => {});
    }
  }

  /**
   * The frame after a capture always counts as changed, and what changed in it is not known. It is drawn
   * after a capture that shows nothing new, and a page at rest is captured from time to time.
   */
  async #drawChange() {
    const { hasDamage } = await this.#draw();
    this.#framesOfRest += 1;
    if (!hasDamage && this.#framesOfRest < kFramesOfRest) return;
    const data = await this.#capture();
    if (data === this.#data) await this.#draw();
    else this.#emit(data);
  }

  /** Takes no pictures of its own accord until resume(): meanwhile the browser lays nothing out for them. */
  pause() {
    this.#isPaused = true;
  }

  resume() {
    this.#isPaused = false;
  }

  /** The page as it is now, or later, as a PNG in base64. */
  picture() {
    return this.#inTurn(() => this.#capture());
  }

  /** Emits a picture of the page as it is now, or later; resolves with its number. */
  fresh() {
    return this.#inTurn(async () => this.#emit(await this.#capture()));
  }

  /** Emits the previous picture once more; returns its new number. */
  again() {
    return this.#announce({});
  }

  #emit(data) {
    this.#data = data;
    return this.#announce({ data });
  }

  #announce(picture) {
    this.#last += 1;
    this.emit('frame', { n: this.#last, ...picture });
    return this.#last;
  }

  // The browser draws one frame at a time.
  #inTurn(action) {
    const result = this.#turn.then(action);
    this.#turn = result.catch(() => {});
    return result;
  }

  #draw(details) {
    return this.#page.send('HeadlessExperimental.beginFrame', details);
  }

  async #capture() {
    this.#framesOfRest = 0;
    if (this.#zoom !== 1) return this.#captureZoomed();
    return (await this.#draw({ screenshot: { format: 'png', optimizeForSpeed: true } })).screenshotData;
  }

  /** The frames themselves show the page without its zoom. A capture takes several of them. */
  async #captureZoomed() {
    let isTaken = false;
    const captured = this.#page.sendInTurn('Page.captureScreenshot', { format: 'png', optimizeForSpeed: true })
      .finally(() => (isTaken = true));
    captured.catch(() => {});  // It may fail while a frame is drawn.
    while (!isTaken) await this.#draw();
    return (await captured).data;
  }
}
