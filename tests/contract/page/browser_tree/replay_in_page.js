// Runs in the browser's page: replays the cases as the program changes its page and gives, for
// each, the body's tree and the inner text of the name lines. The counterpart of tree_replay.cpp.

const isText = (node) => node.nodeType === Node.TEXT_NODE;
const isBlank = (node) => isText(node) && !/[^ \t\r\n\f]/.test(node.data);
const childNodes = (node) => [...node.childNodes].filter((child) => !isBlank(child));
const byId = (id) => document.getElementById(id);
const rowAt = (list, place) => childNodes(byId(list))[Number(place)];
const buttonCell = (row) => childNodes(childNodes(childNodes(row)[1])[0])[1];

function elementFromStartTag(tag) {
  const holder = document.createElement('div');
  holder.innerHTML = tag;
  const element = holder.firstChild;
  element.remove();
  return element;
}

const steps = {
  row(list, startTag, nameLine, panel) {
    const row = elementFromStartTag(startTag);
    row.insertAdjacentHTML('afterBegin', nameLine);
    row.insertAdjacentHTML('beforeEnd', panel);
    byId(list).appendChild(row);
  },
  html(id, markup) { byId(id).innerHTML = markup; },
  style(id, property, value) { byId(id).style[property] = value; },
  modify(list, place, version, buttons) {
    const row = rowAt(list, place);
    const cell = childNodes(childNodes(row)[0])[1];
    cell.innerText = '';
    cell.innerText = 'Version ' + version;
    buttonCell(row).innerHTML = '';
    buttonCell(row).innerHTML = buttons;
  },
  remove(list, place) { rowAt(list, place).remove(); },
  disable(list, place) { childNodes(buttonCell(rowAt(list, place)))[0].disabled = true; },
};

const quoted = (text) =>
  '"' + text.replace(/["\\]/g, '\\$&').replace(/\n/g, '\\n') + '"';

function treeLines(node, depth = 0) {
  const indent = '  '.repeat(depth);
  if (isText(node)) return [indent + quoted(node.data)];
  if (node.nodeType === Node.COMMENT_NODE) return [indent + 'comment ' + quoted(node.data)];
  const attributes = [...node.attributes].sort((a, b) => (a.name < b.name ? -1 : 1));
  const line = attributes.reduce(
    (text, { name, value }) =>
      `${text} ${name}=${quoted(name === 'style' ? node.style.cssText : value)}`,
    indent + node.localName);
  return [line, ...childNodes(node).flatMap((child) => treeLines(child, depth + 1))];
}

function nameLineTexts() {
  return [...document.body.querySelectorAll('span[id]')]
    .filter((span) => span.id !== '' && span.id === span.parentElement.id)
    .map((span) => span.innerText);
}

function replay({ body, cases }) {
  return cases.map((treeCase) => {
    document.body.innerHTML = body;
    for (const [kind, ...words] of treeCase.steps) steps[kind](...words);
    return { tree: treeLines(document.body), texts: nameLineTexts() };
  });
}
