// Style sheets as document mode 5 reads them: rules and declarations that it does not know are
// removed, and what it reads differently is rewritten for a modern engine. `csstree` parses and
// writes CSS.

const kSides = ['top', 'right', 'bottom', 'left'];
const sided = (prefix, suffix = '') => kSides.map((side) => `${prefix}-${side}${suffix}`);

const kLengthProperties = new Set([
  'width', 'height', ...kSides, 'margin', ...sided('margin'), 'padding', ...sided('padding'),
  'border-width', ...sided('border', '-width'), 'font-size', 'letter-spacing', 'word-spacing', 'text-indent',
]);

const kKnownProperties = new Set([
  ...kLengthProperties,
  'background', ...['attachment', 'color', 'image', 'position', 'repeat'].map((part) => `background-${part}`),
  'border', 'border-color', 'border-style', 'border-collapse', ...sided('border'),
  ...sided('border', '-color'), ...sided('border', '-style'),
  'clear', 'clip', 'color', 'cursor', 'direction', 'display', 'float', 'font', 'font-family',
  'font-style', 'font-variant', 'font-weight', 'line-height', 'list-style', 'list-style-image',
  'list-style-position', 'list-style-type', 'overflow', 'overflow-x', 'overflow-y', 'page-break-after',
  'page-break-before', 'position', 'table-layout', 'text-align', 'text-decoration', 'text-overflow',
  'text-transform', 'unicode-bidi', 'vertical-align', 'visibility', 'white-space', 'word-break',
  'word-wrap', 'z-index', 'zoom', '-ms-interpolation-mode',
]);

// For these properties the mode knows only these words.
const kKnownWords = {
  'display': 'block inline inline-block list-item none table-footer-group table-header-group',
  'position': 'static relative absolute',
  'overflow': 'visible hidden scroll auto',
  'overflow-x': 'visible hidden scroll auto',
  'overflow-y': 'visible hidden scroll auto',
  'visibility': 'visible hidden inherit',
  'direction': 'ltr rtl inherit',
  'white-space': 'normal nowrap pre',
  'text-align': 'left right center justify',
  'cursor': 'all-scroll auto col-resize crosshair default e-resize hand help move n-resize ne-resize ' +
    'no-drop not-allowed nw-resize pointer progress row-resize s-resize se-resize sw-resize text ' +
    'vertical-text w-resize wait',
};
for (const [property, words] of Object.entries(kKnownWords)) kKnownWords[property] = new Set(words.split(' '));

// Text is "small" by default, and each word is a step larger than in later modes.
const kFontSizes = {
  'xx-small': 10, 'x-small': 13, 'small': 16, 'medium': 18, 'large': 24, 'x-large': 32, 'xx-large': 48,
};

const kKnownUnits = new Set('px pt pc in cm mm em ex'.split(' '));
const kKnownFunctions = new Set(['rgb', 'rect']);
const kLaterWords = new Set('inherit initial unset revert revert-layer currentcolor'.split(' '));
const kLinkStates = new Set(['hover', 'active', 'focus']);
const kPseudoClasses = new Set([...kLinkStates, 'link', 'visited', 'first-line', 'first-letter']);
const kAtRules = new Set(['charset', 'font-face', 'import', 'media', 'page']);
const kMedia = /^(all|screen|print)(\s*,\s*(all|screen|print))*$/i;

/** Names of the system's colours, each with the variable that holds it on this page. */
const kSystemColors = new Map(
  ('ActiveBorder ActiveCaption AppWorkspace Background ButtonFace ButtonHighlight ButtonShadow ButtonText ' +
   'CaptionText GrayText Highlight HighlightText InactiveBorder InactiveCaption InactiveCaptionText ' +
   'InfoBackground InfoText Menu MenuText Scrollbar ThreeDDarkShadow ThreeDFace ThreeDHighlight ' +
   'ThreeDLightShadow ThreeDShadow Window WindowFrame WindowText')
    .split(' ').map((name) => [name.toLowerCase(), `--system-${name.toLowerCase()}`]));

const kInlineTags = 'a,abbr,acronym,b,bdo,big,cite,code,dfn,em,font,i,kbd,label,q,s,samp,small,span,' +
  'strike,strong,sub,sup,tt,u,var';

const kSystemVariables = new Set(kSystemColors.values());

/**
 * The variable of a system colour, given by its name or, if it was read before, by the variable.
 */
function systemColor(node) {
  if (node.type === 'Identifier') return kSystemColors.get(node.name.toLowerCase());
  const name = node.type === 'Function' && node.name === 'var' ? node.children.first?.name : undefined;
  return kSystemVariables.has(name) ? name : undefined;
}

function knowsNode(property, node) {
  switch (node.type) {
    case 'Identifier': {
      const word = node.name.toLowerCase();
      if (kLaterWords.has(word) && !kKnownWords[property]?.has(word)) return false;
      return word !== 'transparent' || property.startsWith('background');
    }
    case 'Dimension': return kKnownUnits.has(node.unit.toLowerCase());
    case 'Function': return kKnownFunctions.has(node.name.toLowerCase()) || systemColor(node) !== undefined;
    case 'Hash': return node.value.length === 3 || node.value.length === 6;
    default: return true;
  }
}

function knowsValue(property, value) {
  if (value.type !== 'Value') return false;
  if (csstree.find(value, (node) => !knowsNode(property, node))) return false;
  const words = kKnownWords[property];
  return !words || csstree.generate(value).toLowerCase().split(/\s+/).every((word) => words.has(word));
}

/** Rewrites a value that the mode reads differently. */
function translate(declaration, property) {
  if (property === '-ms-interpolation-mode') {
    declaration.property = 'image-rendering';
    const isSmooth = csstree.generate(declaration.value).toLowerCase() === 'bicubic';
    declaration.value = csstree.parse(isSmooth ? 'auto' : 'pixelated', { context: 'value' });
    return;
  }
  declaration.value.children.forEach((node, item) => {
    const size = property === 'font-size' && kFontSizes[node.name?.toLowerCase()];
    if (size) {
      item.data = { type: 'Dimension', value: String(size), unit: 'px' };
    } else if (node.type === 'Number' && kLengthProperties.has(property)) {
      item.data = { type: 'Dimension', value: node.value, unit: 'px' };
    } else if (property === 'cursor' && node.type === 'Identifier' && node.name.toLowerCase() === 'hand') {
      node.name = 'pointer';
    }
  });
}

/** The value with each system colour replaced by what `instead` returns for its variable. */
function withSystemColors(value, instead) {
  const changed = csstree.clone(value);
  changed.children.forEach((node, item) => {
    const variable = systemColor(node);
    if (variable) item.data = csstree.parse(instead(variable), { context: 'value' }).children.first;
  });
  return changed;
}

/** Removes what the mode does not know from a list of declarations. */
function keepKnown(declarations) {
  declarations.forEach((node, item, list) => {
    const property = node.type === 'Declaration' ? node.property.toLowerCase() : '';
    if (!kKnownProperties.has(property) || !knowsValue(property, node.value)) {
      list.remove(item);
      return;
    }
    node.property = property;
    translate(node, property);
    const { error } = csstree.lexer.matchProperty(node.property, withSystemColors(node.value, () => 'black'));
    if (error) list.remove(item);
    else node.value = withSystemColors(node.value, (variable) => `var(${variable})`);
  });
}

function knowsSelector(selector) {
  let isLink = false;
  let classes = 0;
  return selector.children.toArray().every((node) => {
    switch (node.type) {
      case 'Combinator':
        isLink = false;
        classes = 0;
        return node.name === ' ';
      case 'TypeSelector':
        isLink = node.name.toLowerCase() === 'a';
        return node.name !== '*' && !node.name.includes('|');
      case 'IdSelector': return true;
      case 'ClassSelector': return ++classes === 1;
      case 'PseudoClassSelector':
        return node.children === null && kPseudoClasses.has(node.name.toLowerCase()) &&
          (isLink || !kLinkStates.has(node.name.toLowerCase()));
      default: return false;
    }
  });
}

const givesSize = (declaration) =>
  /^(width|height)$/.test(declaration.property) && csstree.generate(declaration.value) !== 'auto';

/** Inline elements take a width or height, unless the page itself says how to display them. */
function ruleForSizedInlines(rule) {
  const selector = csstree.generate(rule.prelude);
  if (!rule.block.children.some(givesSize) || selector.includes(':first-')) return '';
  return `:where(${selector}):where(${kInlineTags}){display:inline-block}`;
}

function knowsAtRule({ name, prelude }) {
  if (!kAtRules.has(name.toLowerCase())) return false;
  return name.toLowerCase() !== 'media' || kMedia.test(csstree.generate(prelude).trim());
}

/** A style sheet as the mode reads it. */
function quirksSheet(text) {
  const sheet = csstree.parse(text, { parseCustomProperty: false });
  const companions = [];
  csstree.walk(sheet, {
    leave(node, item, list) {
      if (node.type === 'Atrule' && !knowsAtRule(node)) {
        list.remove(item);
      } else if (node.type === 'Rule') {
        if (node.prelude.type !== 'SelectorList') return list.remove(item);
        node.prelude.children.forEach((selector, place, all) => {
          if (!knowsSelector(selector)) all.remove(place);
        });
        if (node.prelude.children.isEmpty) return list.remove(item);
        keepKnown(node.block.children);
        companions.push(ruleForSizedInlines(node));
      } else if (node.type === 'Raw' && list && this.rule === null) {
        list.remove(item);
      }
      return undefined;
    },
  });
  return companions.join('') + csstree.generate(sheet);
}

const knownStyles = new Map();

/** The text of a style attribute as the mode reads it. */
function quirksStyle(text) {
  let known = knownStyles.get(text);
  if (known === undefined) {
    const list = csstree.parse(text, { context: 'declarationList' });
    const before = csstree.generate(list);
    keepKnown(list.children);
    // A text from which nothing is dropped stays as it was written.
    known = csstree.generate(list) === before ? text : csstree.generate(list).replaceAll(';', '; ');
    if (knownStyles.size > 1000) knownStyles.clear();
    knownStyles.set(text, known);
  }
  return known;
}
