import { EventEmitter, once } from 'node:events';
import { contentSecurityPolicy, kDefaultFlags, mayRefresh, refusal, scriptsRun } from './download_control.mjs';
import { DevToolsError } from './devtools_pipe.mjs';
import { hostSheet, kNoBorder } from './host_flags.mjs';
import { contentTypeOf, isDocument, toUrl, toWindowsPath } from './local_files.mjs';
import { quirksSheet } from './quirks_sheet.mjs';
import { kBindingName, kWorldName, pageScript } from './page_script.mjs';

const kDisconnected = JSON.stringify({ e: 0x80010108, d: 'The document is gone' });
const kLoadLimitMs = 120000;
const kFileMissing = 404;
const kErrorPage = '<html><head><title>Cannot be displayed</title></head>' +
  '<body id="error">This page cannot be displayed.</body></html>';
const kQuirksMode = 5;

/**
 * The browser's only page. Emits
 *   'beforeNavigate' {n, url, document}: the listener answers with decide(n, cancel); `document` is
 *     false for a file that no page can show;
 *   'navigated' {url}, 'complete' {url}, 'failed' {url, status};
 *   'frameNavigated' {url}, 'frameComplete' {url} for a frame below the page, whose 'beforeNavigate' says
 *     {frame: true};
 *   'document' when a new document can be called;
 *   'report' (text) for what the page side tells the host.
 * Documents are numbered; handles of the page side are valid for one document only.
 */
export class BrowserPage extends EventEmitter {
  #pipe;
  #files;
  #session;
  #frame;
  #world;
  #flags = kDefaultFlags;
  #questions = new Map();
  #lastQuestion = 0;
  #approved;
  #failedUrl;
  #loadLimit;
  #colors;
  #hostFlags = kNoBorder;
  #frames = new Map();
  #turn = Promise.resolve();

  /** Every requested URL, with the reason of its refusal if there was one. */
  requests = [];
  /** The number of the current document. */
  generation = 0;
  url = 'about:blank';

  constructor(pipe, files) {
    super();
    this.#pipe = pipe;
    this.#files = files;
  }

  /** Makes the page; call once before anything else. It is drawn frame by frame, see Frames. */
  async open() {
    const { targetId } = await this.#pipe.send('Target.createTarget', { url: 'about:blank', enableBeginFrameControl: true });
    const { sessionId } = await this.#pipe.send('Target.attachToTarget', { targetId, flatten: true });
    this.#session = sessionId;
    this.#frame = targetId;  // The top frame has the page's own number.
    this.listen('Page.frameNavigated', ({ frame }) => this.#navigated(frame));
    this.listen('Page.navigatedWithinDocument', (params) => this.#moved(params));
    this.listen('Page.frameStoppedLoading', ({ frameId }) => this.#frameLoaded(frameId));
    this.listen('Page.loadEventFired', () => this.#loaded());
    this.listen('Runtime.executionContextCreated', ({ context }) => this.#adopt(context));
    this.listen('Runtime.bindingCalled', ({ payload }) => this.emit('report', payload));
    // A script that waits for an answer to its dialog would keep the host waiting too.
    this.listen('Page.javascriptDialogOpening',
      () => this.send('Page.handleJavaScriptDialog', { accept: false }).catch(() => {}));
    this.listen('Fetch.requestPaused', (params) => this.#requested(params));
    await Promise.all([
      this.send('Page.enable'),
      this.send('Runtime.enable'),
      this.send('Runtime.addBinding', { name: kBindingName, executionContextName: kWorldName }),
      this.send('Page.addScriptToEvaluateOnNewDocument', { source: pageScript(), worldName: kWorldName }),
      this.send('Fetch.enable', { patterns: [{ urlPattern: '*' }] }),
      this.send('Emulation.setFocusEmulationEnabled', { enabled: true }),
      this.#pipe.send('Browser.setDownloadBehavior', { behavior: 'deny' }),
    ]);
  }

  /** A command for this page; see DevToolsPipe.send. */
  send(method, params = {}) {
    return this.#pipe.send(method, params, this.#session);
  }

  /**
   * A command that waits for those sent this way before it, because input and pictures interfere
   * with each other.
   */
  sendInTurn(method, params = {}) {
    const answer = this.sendAfterTurn(method, params);
    this.#turn = answer.catch(() => {});
    return answer;
  }

  /** The same for a command for which those sent after it in turn do not wait. */
  sendAfterTurn(method, params = {}) {
    return this.#turn.then(() => this.send(method, params));
  }

  /** Listens to an event of this page. */
  listen(method, listener) {
    this.#pipe.on(method, (params, sessionId) => {
      if (sessionId === this.#session) listener(params);
    });
  }

  /**
   * Asks the host and then loads a URL or Windows path under the host's download flags, and shows it as
   * the host's other flags (DOCHOSTUIFLAG_) say.
   */
  async navigate(target, flags = kDefaultFlags, hostFlags = kNoBorder) {
    const url = toUrl(target);
    this.#flags = flags;
    this.#hostFlags = hostFlags;
    if (await this.#isCancelled(url)) return;
    await this.send('Emulation.setScriptExecutionDisabled', { value: !scriptsRun(flags) });
    this.#approved = url;
    this.#failedUrl = undefined;
    clearTimeout(this.#loadLimit);
    this.#loadLimit = setTimeout(() => this.emit('failed', { url, status: 0 }), kLoadLimitMs);
    const result = await this.send('Page.navigate', { url });
    if (result.errorText) clearTimeout(this.#loadLimit);
  }

  /** Loads the error page of a failed navigation, under the URL that could not be loaded. */
  async showError(url) {
    this.#approved = url;
    this.#failedUrl = url;
    await this.send('Page.navigate', { url });
  }

  /** The host's answer to a 'beforeNavigate'. */
  decide(number, cancel) {
    this.#questions.get(number)?.(cancel);
    this.#questions.delete(number);
  }

  /** Answers a late-bound call on the document `generation`, as JSON text. */
  async answer(generation, request) {
    if (generation !== this.generation) return kDisconnected;
    try {
      return await this.evaluate(`standin.answer(${JSON.stringify(request)})`);
    } catch {
      return kDisconnected;
    }
  }

  /**
   * Evaluates in the page side's world and resolves with the value. Rejects with a DevToolsError if
   * the document is gone, and with an Error with the page's own message if the expression throws.
   */
  async evaluate(expression) {
    if (this.#world === undefined) throw new DevToolsError('There is no document yet');
    const { result, exceptionDetails } = await this.send('Runtime.evaluate',
      { expression, contextId: this.#world, returnByValue: true, awaitPromise: true });
    if (exceptionDetails) {
      throw new Error(exceptionDetails.exception?.description ?? exceptionDetails.text);
    }
    return result.value;
  }

  /**
   * Gives this document and all later ones the system's colours, as numbers by name in lower case.
   */
  showColors(colors) {
    const css = (color) => `#${color.toString(16).padStart(6, '0')}`;
    this.#colors = Object.fromEntries(Object.entries(colors).map(([name, color]) => [name, css(color)]));
    this.#applyColors();
  }

  #applyHostFlags() {
    this.evaluate(`standin.showAsHostWants(${JSON.stringify(hostSheet(this.#hostFlags))})`).catch(() => {});
  }

  #applyColors() {
    if (this.#colors === undefined) return;
    this.evaluate(`standin.showColors(${JSON.stringify(this.#colors)})`).catch(() => {});
  }

  #isCancelled(url, frame = false) {
    return new Promise((resolve) => {
      const n = ++this.#lastQuestion;
      this.#questions.set(n, resolve);
      this.emit('beforeNavigate', { n, url, document: isDocument(url), frame });
    });
  }

  #adopt(context) {
    if (context.name !== kWorldName || context.auxData.frameId !== this.#frame) return;
    this.#world = context.id;
    this.generation += 1;
    this.#applyColors();
    this.#applyHostFlags();
    this.emit('document');
  }

  #navigated(frame) {
    if (this.#frames.has(frame.id)) this.emit('frameNavigated', { url: this.#frames.get(frame.id) });
    if (frame.id !== this.#frame) return;
    this.#frames.clear();
    this.url = frame.url;
    this.emit('navigated', { url: frame.url });
  }

  #frameLoaded(id) {
    if (!this.#frames.has(id)) return;
    this.emit('frameComplete', { url: this.#frames.get(id) });
    this.#frames.delete(id);
  }

  #moved({ frameId, url }) {
    if (frameId !== this.#frame) return;
    clearTimeout(this.#loadLimit);
    this.url = url;
    this.emit('navigated', { url });
    this.emit('complete', { url });
  }

  #loaded() {
    clearTimeout(this.#loadLimit);
    this.emit('complete', { url: this.url });
  }

  async #requested({ requestId, request, frameId, resourceType }) {
    const isPage = resourceType === 'Document' && frameId === this.#frame;
    try {
      if (isPage) await this.#answerPage(requestId, request.url);
      else await this.#answerResource(requestId, request.url, resourceType, frameId);
    } catch {
      // The request disappeared with its document.
    }
  }

  async #answerPage(requestId, url) {
    const isApproved = url.split('#')[0] === this.#approved?.split('#')[0];
    // Another request may come first: that of a page that is left before it has begun.
    if (isApproved) this.#approved = undefined;
    if (isApproved && url === this.#failedUrl) {
      this.#failedUrl = undefined;
      await this.#send(requestId, 'text/html', Buffer.from(kErrorPage));
      return;
    }
    if (!isApproved && !scriptsRun(this.#flags) && !mayRefresh(this.#flags)) {
      await this.#refuse(requestId, url, 'refreshes are off');
      return;
    }
    if (!isApproved && (await this.#isCancelled(url))) {
      await this.#refuse(requestId, url, 'cancelled by the host');
      return;
    }
    const file = toWindowsPath(url);
    if (file === undefined) {
      await this.#refuse(requestId, url, 'not a local file');
      this.emit('failed', { url, status: 0 });
      return;
    }
    if (!(await this.#fulfil(requestId, url, file))) this.emit('failed', { url, status: kFileMissing });
  }

  async #answerResource(requestId, url, resourceType, frameId) {
    const file = toWindowsPath(url);
    let reason = refusal(this.#flags, resourceType, file !== undefined);
    if (reason === undefined && resourceType === 'Document') {
      if (await this.#isCancelled(url, true)) reason = 'cancelled by the host';
      else this.#frames.set(frameId, url);
    }
    if (reason === undefined) await this.#fulfil(requestId, url, file, resourceType);
    else await this.#refuse(requestId, url, reason);
  }

  async #fulfil(requestId, url, file, resourceType) {
    let content = await this.#files.read(file);
    if (content === undefined) {
      await this.#refuse(requestId, url, 'no such file');
      return false;
    }
    if (resourceType === 'Stylesheet' && (await this.#documentMode()) === kQuirksMode) {
      content = Buffer.from(quirksSheet(content.toString('utf8')));
    }
    this.requests.push({ url, refused: false });
    await this.#send(requestId, contentTypeOf(file), content);
    return true;
  }

  /** The mode of the document that makes a request, which may arrive before the document does. */
  async #documentMode() {
    for (;;) {
      const { generation } = this;
      try {
        return await this.evaluate('standin.documentMode()');
      } catch (error) {
        if (!(error instanceof DevToolsError)) throw error;
        if (generation === this.generation) await once(this, 'document');
      }
    }
  }

  #send(requestId, contentType, content) {
    return this.send('Fetch.fulfillRequest', {
      requestId,
      responseCode: 200,
      responseHeaders: [
        { name: 'Content-Type', value: contentType },
        { name: 'Content-Security-Policy', value: contentSecurityPolicy(this.#flags) },
      ],
      body: content.toString('base64'),
    });
  }

  /** A refused page leaves the current one unchanged. */
  #refuse(requestId, url, reason) {
    clearTimeout(this.#loadLimit);
    this.requests.push({ url, refused: true, reason });
    return this.send('Fetch.failRequest', { requestId, errorReason: 'Aborted' });
  }
}
