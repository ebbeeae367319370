import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { kGet, kMethod, test, TestBrowser } from './support.mjs';

let browser;
before(async () => (browser = await TestBrowser.start({ 'i.gif': 'GIF89a' })));
after(() => browser.close());

const kMemberNotFound = 0x80020003;

test('members are found without regard to case', async () => {
  await browser.load('<div id=d>text</div>');
  const div = await browser.byId('d');
  assert.equal(await browser.get(div, 'Id'), 'd');
  assert.equal(await browser.get(div, 'INNERTEXT'), 'text');
  await browser.put(await browser.get(div, 'Style'), 'Color', 'white');
  assert.equal(await browser.get(await browser.get(div, 'style'), 'color'), 'white');
});

test('an unknown member is reported as not found', async () => {
  await browser.load('<div id=d></div>');
  const div = await browser.byId('d');
  assert.equal((await browser.call(div, 'noSuchThing', kGet)).e, kMemberNotFound);
  assert.equal((await browser.call(div, 'noSuchThing', kMethod)).e, kMemberNotFound);
});

test('a method is not a property and a property is not a method', async () => {
  await browser.load('<div id=d></div>');
  assert.equal((await browser.call(browser.document, 'getElementsByName', kGet, 'd')).e, kMemberNotFound);
  assert.equal((await browser.call(browser.document, 'all', kMethod)).e, kMemberNotFound);
});

test('an absent element is an absent object', async () => {
  await browser.load('<div></div>');
  assert.deepEqual(await browser.byId('nobody'), { h: 0 });
  const body = await browser.get(browser.document, 'body');
  const root = await browser.get(body, 'parentElement');
  assert.deepEqual(await browser.get(root, 'parentElement'), { h: 0 });
});

test('all.item takes a text for a name and a number for a position', async () => {
  await browser.load('<html><head></head><body><b id=0>zero</b><i id=7>seven</i></body></html>');
  const all = await browser.get(browser.document, 'all');
  assert.equal(await browser.get(await browser.invoke(all, 'item', '7'), 'tagName'), 'I');
  assert.equal(await browser.get(await browser.invoke(all, 'item', 0), 'tagName'), 'HTML');
  assert.equal(await browser.get(await browser.invoke(all, 'item', '0'), 'innerText'), 'zero');
  assert.equal(await browser.get(all, 'length'), 5);
});

test('all.item gives the elements with a shared id as a collection', async () => {
  await browser.load('<p><img id=trans src=i.gif></p><p><img id=trans src=i.gif></p>');
  const both = await browser.invoke(await browser.get(browser.document, 'all'), 'item', 'trans');
  assert.equal(await browser.get(both, 'length'), 2);
  const second = await browser.invoke(await browser.get(browser.document, 'all'), 'item', 'trans', 1);
  assert.deepEqual(await browser.invoke(both, 'item', 1), second);
});

test('getElementsByName matches ids, in document order, and stays live', async () => {
  await browser.load('<div id=7><span id=7>x</span></div><input name=7><div id=8></div>');
  const named = await browser.invoke(browser.document, 'getElementsByName', '7');
  assert.equal(await browser.get(named, 'length'), 3);
  assert.equal(await browser.get(await browser.invoke(named, 'item', 1), 'tagName'), 'SPAN');
  await browser.invoke(await browser.invoke(named, 'item', 0), 'removeNode', true);
  assert.equal(await browser.get(named, 'length'), 1);
});

test('createElement takes a start tag', async () => {
  await browser.load('<div id=list></div>');
  const row = await browser.invoke(browser.document, 'createElement',
    "<div id =7 style='padding-bottom:5pt; padding-top:5pt;'>");
  assert.deepEqual(await browser.get(row, 'parentElement'), { h: 0 });
  await browser.invoke(row, 'insertAdjacentHTML', 'afterBegin', "<span id =7><font>a</font></span>");
  await browser.invoke(row, 'insertAdjacentHTML', 'beforeEnd', '<div id =\'div7\'>b</div>');
  await browser.invoke(await browser.byId('list'), 'appendChild', row);
  assert.equal(await browser.page.evaluate('document.getElementById("list").innerHTML'),
    '<div id="7" style="padding-bottom:5pt; padding-top:5pt;">' +
    '<span id="7"><font>a</font></span><div id="div7">b</div></div>');
  const plain = await browser.invoke(browser.document, 'createElement', 'span');
  assert.equal(await browser.get(plain, 'tagName'), 'SPAN');
});

test('childNodes leaves out white-space text, also through a position as an argument', async () => {
  await browser.load('<div id=d>\n  <b>1</b>\n  text\n  <i>2</i>\n</div>');
  const div = await browser.byId('d');
  const nodes = await browser.get(div, 'childNodes');
  assert.equal(await browser.get(nodes, 'length'), 3);
  assert.equal(await browser.get(await browser.get(div, 'childNodes', 2), 'tagName'), 'I');
  assert.equal(await browser.get(await browser.get(div, 'children', 1), 'tagName'), 'I');
  assert.equal(await browser.get(await browser.invoke(nodes, 'item', 0), 'innerText'), '1');
});

test('removeNode without its argument leaves the children', async () => {
  await browser.load('<div id=d><p id=p><b>1</b></p></div>');
  await browser.invoke(await browser.byId('p'), 'removeNode');
  assert.equal(await browser.get(await browser.byId('d'), 'innerHTML'), '<b>1</b>');
});

test('a length without a unit is in pixels', async () => {
  await browser.load("<div id=d style='height:33px; width:70'>x</div>");
  const style = await browser.get(await browser.byId('d'), 'style');
  assert.equal(await browser.get(style, 'pixelHeight'), 33);
  assert.equal(await browser.get(style, 'pixelWidth'), 70);
  await browser.put(style, 'Height', 480);
  assert.equal(await browser.get(style, 'height'), '480px');
  await browser.put(style, 'fontSize', '16');
  assert.equal(await browser.get(style, 'fontSize'), '16px');
  await browser.put(style, 'fontWeight', '800');
  assert.equal(await browser.get(style, 'fontWeight'), '800');
  await browser.put(style, 'fontWeight', '');
  assert.equal(await browser.get(style, 'fontWeight'), '');
  await browser.put(style, 'pixelTop', 5);
  assert.equal(await browser.get(style, 'top'), '5px');
});

test('every element can be disabled', async () => {
  await browser.load('<span id=s>x</span><input type=button id=b disabled value=Update>');
  const span = await browser.byId('s');
  assert.equal(await browser.get(span, 'disabled'), false);
  await browser.put(span, 'disabled', true);
  assert.equal(await browser.get(span, 'disabled'), true);
  const button = await browser.byId('b');
  assert.equal(await browser.get(button, 'disabled'), true);
  await browser.put(button, 'disabled', false);
  assert.equal(await browser.get(button, 'disabled'), false);
  assert.equal(await browser.get(button, 'Value'), 'Update');
});

test('the source of an image reads back as a URL that ends with its file name', async () => {
  await browser.load('<img id=t src="a.gif">');
  const image = await browser.byId('t');
  await browser.put(image, 'src', 'ichannels.gif');
  assert.equal(await browser.get(image, 'src'), 'file:///C:/ichannels.gif');
});

test('getAttribute gives a null value for an attribute that is not there', async () => {
  await browser.load('<div id=d title=t></div>');
  const div = await browser.byId('d');
  assert.equal(await browser.invoke(div, 'getAttribute', 'title'), 't');
  assert.equal(await browser.invoke(div, 'getAttribute', 'lang'), null);
});

test('the document is in quirks mode and its body measures the view', async () => {
  await browser.load('<p>x');
  assert.equal(await browser.get(browser.document, 'compatMode'), 'BackCompat');
  await browser.page.send('Emulation.setDeviceMetricsOverride',
    { width: 640, height: 431, deviceScaleFactor: 1, mobile: false });
  const body = await browser.get(browser.document, 'body');
  assert.equal(await browser.get(body, 'clientHeight'), 431);
});

test('text keeps every UTF-16 unit', async () => {
  await browser.load('<div id=d></div>');
  const text = 'Grüße \u20ac \ud83d\ude00 \ud800 "<&';
  await browser.put(await browser.byId('d'), 'innerText', text);
  assert.equal(await browser.get(await browser.byId('d'), 'innerText'), text);
});

test('the same node has the same handle until the host releases it', async () => {
  await browser.load('<div id=d></div>');
  const first = await browser.byId('d');
  assert.deepEqual(await browser.byId('d'), first);
  const answer = JSON.parse(await browser.page.answer(browser.page.generation,
    { h: first.h, n: 'id', k: kGet, a: [], r: [first.h] }));
  assert.equal(answer.e, 0x80010108);
  const again = await browser.byId('d');
  assert.equal(await browser.get(again, 'id'), 'd');
});

test('a handle of an earlier document names nothing', async () => {
  await browser.load('<div id=d></div>');
  const generation = browser.page.generation;
  const { h } = await browser.byId('d');
  await browser.load('<div id=e></div>');
  const answer = JSON.parse(await browser.page.answer(generation, { h, n: 'id', k: kGet, a: [] }));
  assert.equal(answer.e, 0x80010108);
});

test('the members of a collection come in pieces', async () => {
  await browser.load('<div id=list><b></b> <i></i><u></u></div>');
  const list = await browser.byId('list');
  for (const collection of [
    await browser.get(list, 'children'),
    await browser.invoke(list, 'getElementsByTagName', '*'),
  ]) {
    const tags = async (from, count) => {
      const { l } = await browser.get(collection, '[members]', from, count);
      return Promise.all(l.map((member) => browser.get(member, 'tagName')));
    };
    assert.deepEqual(await tags(0, 2), ['B', 'I']);
    assert.deepEqual(await tags(2, 2), ['U']);
    assert.deepEqual(await tags(3, 2), []);
  }
  assert.equal((await browser.call(list, '[members]', kGet, 0, 1)).e, kMemberNotFound);
});

test('an element takes over the attributes of another, but not its id and name', async () => {
  await browser.load("<a id=7 name=n title=old style='color: red'>x</a><a id=8 name=m title=new role=row class=c></a>");
  const row = await browser.byId('7');
  const other = await browser.byId('8');
  await browser.invoke(row, 'mergeAttributes', other);
  const markup = () => browser.get(row, 'outerHTML');
  assert.equal(await markup(),
    '<a id="7" name="n" title="new" style="color: red" role="row" class="c">x</a>');
  await browser.invoke(row, 'mergeAttributes', other, false);
  assert.match(await markup(), /^<a id="8" name="m"/);
});
