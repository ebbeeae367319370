// Reads the suite's registry files without any of the program's code, so that tests can check their
// required contents.
import { DOMParser } from '@xmldom/xmldom';

const parser = new DOMParser({
  onError: (level, message) => {
    throw new Error(`Not well-formed (${level}): ${message}`);
  },
});

/** The document element of a text as a DOM. Throws if the text is not well-formed. */
export const parseXml = (text) =>
  parser.parseFromString(text.replace(/^\ufeff/, ''), 'text/xml').documentElement;

const escaped = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;');
const quoted = (value) => `"${escaped(value).replaceAll('"', '&quot;')}"`;

function written(node) {
  switch (node.nodeType) {
    case node.ELEMENT_NODE: {
      const attributes = Array.from(node.attributes, ({ name, value }) => `${name}=${quoted(value)}`);
      const content = Array.from(node.childNodes, written).join('');
      return `<${[node.tagName, ...attributes].join(' ')}>${content}</${node.tagName}>`;
    }
    case node.COMMENT_NODE:
      return `<!--${node.data}-->`;
    case node.TEXT_NODE:
    case node.CDATA_SECTION_NODE:
      return escaped(node.data);
    default:
      return '';
  }
}

/** The document element of a text, written in one way: the same for texts with the same meaning. */
export const canonicalXml = (text) => written(parseXml(text));
