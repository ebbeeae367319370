// Reads the suite's registry files without any of the program's code, so that tests can hold them to
// what must stand in them.

const kText = String.raw`(?<text>[^<]+)`;
const kComment = String.raw`<!--(?<comment>(?:(?!--)[^])*)-->`;
const kInstruction = String.raw`<\?(?<instruction>[^]*?)\?>`;
const kEnd = String.raw`</(?<end>[^\s<>/]+)\s*>`;
const kAttribute = String.raw`\s+([^\s=<>"'/]+)\s*=\s*(?:"([^"<]*)"|'([^'<]*)')`;
const kAttributes = `(?<attributes>(?:${kAttribute.replaceAll(/\((?!\?)/g, '(?:')})*)`;
const kStart = String.raw`<(?<start>[^\s<>/!?]+)${kAttributes}\s*(?<empty>/?)>`;
const kToken = new RegExp([kText, kComment, kInstruction, kEnd, kStart].join('|'), 'y');

const kEntities = { amp: '&', lt: '<', gt: '>', quot: '"', apos: "'" };

function plain(text) {
  return text.replaceAll(/&(?:#x([\da-f]+)|#(\d+)|(\w+));|&/gi, (whole, hex, decimal, name) => {
    if (hex) return String.fromCodePoint(parseInt(hex, 16));
    if (decimal) return String.fromCodePoint(Number(decimal));
    if (!Object.hasOwn(kEntities, name ?? '')) throw new Error(`Not well-formed: "${whole}"`);
    return kEntities[name];
  });
}

/**
 * The document element as {name, attributes: [[name, value]], children}; a child is such an element,
 * {text} or {comment}. Throws where the text is not well-formed, or has a document type.
 */
export function parseXml(text) {
  const document = { children: [] };
  const open = [document];
  kToken.lastIndex = text.startsWith('\ufeff') ? 1 : 0;
  while (kToken.lastIndex < text.length) {
    const at = kToken.lastIndex;
    const token = kToken.exec(text)?.groups;
    if (!token) throw new Error(`Not well-formed at ${at}: ${text.substring(at, at + 40)}`);
    const { children } = open.at(-1);
    if (token.text !== undefined) {
      children.push({ text: plain(token.text) });
    } else if (token.comment !== undefined) {
      children.push({ comment: token.comment });
    } else if (token.end !== undefined) {
      if (open.length < 2 || open.pop().name !== token.end) throw new Error(`</${token.end}> ends nothing`);
    } else if (token.start !== undefined) {
      const attributes = [...token.attributes.matchAll(new RegExp(kAttribute, 'g'))];
      const element = {
        name: token.start,
        attributes: attributes.map(([, name, double, single]) => [name, plain(double ?? single)]),
        children: [],
      };
      const names = element.attributes.map(([name]) => name);
      if (new Set(names).size < names.length) throw new Error(`<${token.start}> has an attribute twice`);
      children.push(element);
      if (!token.empty) open.push(element);
    }
  }
  const elements = document.children.filter(({ name }) => name);
  const strays = document.children.filter(({ text: stray }) => stray?.trim());
  if (open.length > 1 || elements.length !== 1 || strays.length > 0) throw new Error('Not one whole document');
  return elements[0];
}

const escaped = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;');
const quoted = (value) => `"${escaped(value).replaceAll('"', '&quot;')}"`;

function written({ name, attributes, children, text, comment }) {
  if (text !== undefined) return escaped(text);
  if (comment !== undefined) return `<!--${comment}-->`;
  const start = [name, ...attributes.map(([key, value]) => `${key}=${quoted(value)}`)].join(' ');
  return `<${start}>${children.map(written).join('')}</${name}>`;
}

/** The document element of a text, written in one way: the same for texts that mean the same. */
export const canonicalXml = (text) => written(parseXml(text));
