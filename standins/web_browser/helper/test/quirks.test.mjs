// What document mode 5 does differently from a modern engine, point by point.
import assert from 'node:assert/strict';
import { after, before } from 'node:test';
import { test, TestBrowser } from './support.mjs';

let browser;
before(async () => {
  browser = await TestBrowser.start({
    'sheet.css': 'b { width: 70px } p > b { width: 90px }', 'next.css': 'b { width: 30px }',
  });
});
after(() => browser.close());

const sheet = (text) => browser.page.evaluate(`standin.quirksSheet(${JSON.stringify(text)})`);
const style = (text) => browser.page.evaluate(`standin.quirksStyle(${JSON.stringify(text)})`);
const computed = (selector, property) => browser.page.evaluate(
  `getComputedStyle(document.querySelector(${JSON.stringify(selector)}))[${JSON.stringify(property)}]`);
const box = (selector) => browser.page.evaluate(`(() => {
  const { x, y, width, height } = document.querySelector(${JSON.stringify(selector)}).getBoundingClientRect();
  return { x, y, width, height };
})()`);

test('a page without a doctype is in mode 5, and one that names its mode is in that mode', async () => {
  const mode = async (markup) => {
    await browser.load(markup);
    return browser.get(browser.document, 'documentMode');
  };
  const named = (number) => `<meta http-equiv="X-UA-Compatible" content="IE=${number}">`;
  assert.equal(await mode('<p>x'), 5);
  assert.equal(await mode(`<html><head>${named(5)}</head><p>x`), 5);
  assert.equal(await mode(`<html><head>${named(9)}</head><p>x`), 9);
  assert.equal(await mode('<!doctype html><p>x'), 7);
  assert.equal(await mode(`<!doctype html><html><head>${named(5)}</head><p>x`), 5);
});

test('from mode 9 on, an element is not created from a start tag', async () => {
  await browser.load('<html><head><meta http-equiv="X-UA-Compatible" content="IE=9"></head><p>x');
  assert.notEqual((await browser.call(browser.document, 'createElement', 1, '<div id=7>')).e, undefined);
  const div = await browser.invoke(browser.document, 'createElement', 'div');
  assert.equal(await browser.get(div, 'tagName'), 'DIV');
});

test('other modes are left to the engine', async () => {
  await browser.load(`<!doctype html><style>p > b { display: flex }</style>
    <p><b style="min-width: 9px">x</b><div id=d style="width:100px; padding:10px">`);
  assert.equal(await computed('b', 'display'), 'flex');
  assert.equal(await computed('b', 'minWidth'), '9px');
  assert.equal((await box('#d')).width, 120);
});

test('at-rules of later engines are removed with everything in them', async () => {
  assert.equal(await sheet('@supports (display: flex) { b { color: red } } i { color: red }'), 'i{color:red}');
  assert.equal(await sheet('@media (max-width: 9px) { b { color: red } } @layer x { i { color: red } }'), '');
  assert.equal(await sheet('@media screen { b { color: red } }'), '@media screen{b{color:red}}');
});

test('selectors of later engines are removed, those beside them stay', async () => {
  for (const refused of ['p > b', 'p + b', 'p ~ b', '[title]', 'input[disabled]', 'b::before', 'b:before',
                         'b:first-child', 'b:not(.x)', '.x.y', '*', 'b:disabled', ':root', '::selection']) {
    assert.equal(await sheet(`${refused}, i { color: red }`), 'i{color:red}', refused);
    assert.equal(await sheet(`${refused} { color: red }`), '', refused);
  }
  for (const known of ['p b', '#x', '.x', 'b.x', 'div.list span font', 'a:link', 'a:hover', 'a.x:focus']) {
    assert.equal(await sheet(`${known}{color:red}`), `${known}{color:red}`);
  }
});

test('only links react to the pointer or the focus', async () => {
  for (const state of ['hover', 'active', 'focus']) {
    assert.equal(await sheet(`div:${state} { color: red }`), '');
    assert.equal(await sheet(`a b:${state} { color: red }`), '');
  }
});

test('properties and values of later engines are removed', async () => {
  for (const declaration of [
    'display: flex', 'display: table-cell', 'display: grid', 'position: sticky', 'position: fixed',
    'min-width: 1px', 'max-height: 1px', 'box-sizing: border-box', 'border-radius: 2px', 'opacity: .5',
    'outline: 1px solid red', 'content: "x"', 'color: rgba(0,0,0,.5)', 'color: #1234', 'width: calc(1px + 1px)',
    'width: 2rem', 'width: 50vw', 'color: inherit', 'border-color: transparent', 'flex: 1', '--x: 1',
    'color: var(--x)', 'overflow-wrap: anywhere', 'background: linear-gradient(red, blue)', 'all: unset',
    'box-shadow: 0 0 1px red', 'transition: all 1s', 'cursor: grab', 'white-space: pre-wrap',
  ]) {
    assert.equal(await sheet(`b { ${declaration}; float: left }`), 'b{float:left}', declaration);
  }
});

test('what the mode knows stays as it is', async () => {
  for (const declaration of [
    'display:list-item', 'position:absolute', 'overflow-x:hidden', 'word-wrap:break-word',
    'color:#123', 'color:rgb(1,2,3)', 'width:50%', 'padding:5pt',
    'white-space:nowrap', 'width:auto!important', 'border:2px inset', 'background:transparent',
    'visibility:inherit', 'direction:inherit', 'vertical-align:top', 'font-family:verdana,sans-serif', 'cursor:pointer',
  ]) {
    assert.equal(await sheet(`div a{${declaration}}`).then((text) => text.split('{display:inline-block}').pop()),
      `div a{${declaration}}`);
  }
});

test('a style attribute is read in the same way', async () => {
  assert.equal(await style('width:70; height:22; font-size:11;'), 'width:70px; height:22px; font-size:11px');
  assert.equal(await style('display: none; flex: 1'), 'display:none');
  assert.equal(await style('margin-left:4pt; width:100&; '), 'margin-left:4pt');
  await browser.load('<b id=b>x</b><i id=i style="padding-top: 5pt">y</i>');
  await browser.page.evaluate(`document.body.insertAdjacentHTML('beforeEnd', '<u id=u style="min-width: 9px">')`);
  await browser.page.evaluate(`void (document.getElementById('b').style.cssText = 'opacity: .5; color: red')`);
  const attribute = (id) => browser.page.evaluate(`document.getElementById('${id}').getAttribute('style')`);
  assert.equal(await attribute('u'), '');
  assert.equal(await attribute('b'), 'color:red');
  assert.equal(await attribute('i'), 'padding-top: 5pt');
});

test('widths and heights include padding and border', async () => {
  await browser.load('<div id=d style="width:100px; height:50px; padding:10px; border:1px solid">x');
  assert.deepEqual([(await box('#d')).width, (await box('#d')).height], [100, 50]);
});

test('inline elements take a width and a height, from a rule or from their attribute', async () => {
  await browser.load(`<style>.wide { width: 150px } #tall { height: 40px } #shown { display: block }</style>
    <body><span id=a style="width:50%; margin-right:4pt">x</span><font id=b class=wide>x</font>
    <span id=tall>x</span><font id=shown class=wide>x</font><span id=plain style="margin:1px">x</span>`);
  const body = (await box('body')).width;
  assert.equal((await box('#a')).width, body / 2);
  assert.equal((await box('#b')).width, 150);
  assert.equal((await box('#tall')).height, 40);
  assert.equal(await computed('#shown', 'display'), 'block');
  assert.equal(await computed('#plain', 'display'), 'inline');
});

test('text is small unless the page says otherwise', async () => {
  await browser.load('<style>b { font-size: small } i { font-size: medium }</style><b>x</b><i>x</i><u>x</u>');
  const sizes = ['b', 'i', 'u'].map((selector) => computed(selector, 'fontSize'));
  assert.deepEqual(await Promise.all(sizes), ['16px', '18px', '16px']);
});

test('important rules outweigh a style attribute', async () => {
  await browser.load('<style>b { width: 30px !important }</style><b style="width:90px">x</b>');
  assert.equal((await box('b')).width, 30);
});

test('a style sheet in its own file is read in the same way, and so is one that is inserted later', async () => {
  await browser.load('<link rel=stylesheet href=sheet.css><p><b>x</b><i>y</i>');
  assert.equal((await box('b')).width, 70);
  await browser.page.evaluate(
    `document.body.insertAdjacentHTML('beforeEnd', '<style>p > i { width: 5px } i { width: 25px }</style>')`);
  assert.equal((await box('i')).width, 25);
});

test('a style sheet that is requested before its document is known is read in the same way', async (t) => {
  const { page } = browser;
  const { evaluate } = page;
  const { release } = browser.holdBack((method) => method === 'Runtime.executionContextCreated');
  t.after(() => {
    page.evaluate = evaluate;
    release();
  });
  // The first question is about the mode of the document.
  page.evaluate = (expression) => evaluate.call(page, expression).finally(() => setImmediate(release));
  await browser.load('<link rel=stylesheet href=sheet.css><p><b>x</b>');
  assert.equal((await box('b')).width, 70);
});

test('the system\'s colours are known by their names', async () => {
  await browser.load('<style>p { background: ButtonFace; color: GRAYTEXT; border: 1px solid WindowFrame }</style><p>x<b style="background: Window">');
  assert.equal(await computed('b', 'backgroundColor'), 'rgb(255, 255, 255)');
  await browser.page.evaluate(`void (document.querySelector('b').style.fontWeight = '800')`);
  assert.equal(await computed('b', 'backgroundColor'), 'rgb(255, 255, 255)');
  assert.equal(await computed('p', 'backgroundColor'), 'rgb(240, 240, 240)');
  assert.equal(await computed('p', 'color'), 'rgb(109, 109, 109)');
  assert.equal(await computed('p', 'borderTopColor'), 'rgb(100, 100, 100)');
});

test('what is disabled has dimmed text, whatever the page says', async () => {
  await browser.load('<style>input { color: red !important }</style><input type=button value=a><input id=off disabled>');
  assert.equal(await computed('input', 'color'), 'rgb(255, 0, 0)');
  assert.equal(await computed('#off', 'color'), 'rgb(109, 109, 109)');
});

test('scaled images are smoothed only where the page asks for it', async () => {
  await browser.load('<style>.smooth { -ms-interpolation-mode: bicubic }</style><img id=a><img id=b class=smooth>');
  assert.equal(await computed('#a', 'imageRendering'), 'pixelated');
  assert.equal(await computed('#b', 'imageRendering'), 'auto');
});
