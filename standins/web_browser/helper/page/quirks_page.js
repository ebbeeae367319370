// The page in document mode 5: its style sheets and style attributes are read as that mode reads
// them, as they arrive and before any of them is drawn. Other modes are left to the engine.

const kQuirksMode = 5;
const kEarliestModeOfStandards = 7;

/** The mode that the page names or, if it names none, the mode of its doctype. */
function documentMode() {
  const named = document.head?.querySelector('meta[http-equiv="x-ua-compatible" i]');
  const [, number] = /\bIE=(?:Emulate\w*?)?(\d+)/i.exec(named?.content ?? '') ?? [];
  if (number !== undefined) return Number(number);
  return document.compatMode === 'BackCompat' ? kQuirksMode : kEarliestModeOfStandards;
}

class QuirksPage {
  constructor() {
    this.sheet_ = new CSSStyleSheet();
    this.sheet_.replaceSync(kEngineSheet);
    this.colors_ = new CSSStyleSheet();
    this.host_ = new CSSStyleSheet();
    this.showColors(kStandardColors);
    this.read_ = new WeakMap();
  }

  /** `colors` maps names of system colours, in lower case, to colours. */
  showColors(colors) {
    const variables = Object.entries(colors).map(([name, color]) => `${kSystemColors.get(name)}:${color}`);
    this.colors_.replaceSync(`:root{${variables.join(';')}}`);
  }

  /** What the control adds to the page's style sheets because its host wants it. */
  showAsHostWants(sheet) {
    this.host_.replaceSync(sheet);
  }

  watch() {
    new MutationObserver((records) => this.follow_(records)).observe(document, {
      subtree: true, childList: true, characterData: true, attributes: true, attributeFilter: ['style'],
    });
  }

  follow_(records) {
    if (documentMode() !== kQuirksMode) {
      document.adoptedStyleSheets = [this.colors_, this.host_];
      return;
    }
    if (document.adoptedStyleSheets.length < 3) {
      document.adoptedStyleSheets = [this.colors_, this.host_, this.sheet_];
    }
    for (const { type, target, addedNodes } of records) {
      if (type === 'attributes') this.readStyle_(target);
      else if (target instanceof HTMLStyleElement || target.parentNode instanceof HTMLStyleElement) {
        this.readSheet_(target instanceof HTMLStyleElement ? target : target.parentNode);
      }
      for (const node of addedNodes) {
        if (!(node instanceof Element)) continue;
        this.read(node);
        for (const below of node.querySelectorAll('style, [style]')) this.read(below);
      }
    }
  }

  read(element) {
    if (element instanceof HTMLStyleElement) this.readSheet_(element);
    if (element.hasAttribute('style')) this.readStyle_(element);
  }

  readSheet_(element) {
    if (this.read_.get(element) === element.textContent) return;
    element.textContent = quirksSheet(element.textContent);
    this.read_.set(element, element.textContent);
  }

  readStyle_(element) {
    const text = element.getAttribute('style') ?? '';
    const known = quirksStyle(text);
    if (known !== text) element.setAttribute('style', known);
  }
}

const quirks = new QuirksPage();
quirks.watch();
