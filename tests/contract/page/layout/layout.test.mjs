// Measures the program's filled page in document mode 5: nothing is cut off and nothing covers
// anything else.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { after, before } from 'node:test';
import { test, TestBrowser } from '../../../../standins/web_browser/helper/test/support.mjs';

const kLists = ['installedaddons', 'installedtransports', 'installedchannels',
                'updatedaddons', 'updatedtransports', 'updatedchannels'];
const page = readFileSync(new URL('../../../../page/AddonUpdates.html', import.meta.url), 'utf8');
const body = execFileSync(process.env.KITBAY_FILLED_PAGE, { encoding: 'utf8' });

let browser;
before(async () => {
  browser = await TestBrowser.start();
  await browser.load(page.replace(/<body>.*<\/body>/s, () => `<body>${body}</body>`));
});
after(() => browser.close());

/** The measurements of an open list, in page pixels; `text` is a tight box around the text. */
const kMeasure = `(id) => {
  const plain = ({ left, top, right, bottom }) => ({ left, top, right, bottom });
  const box = (element) => plain(element.getBoundingClientRect());
  const text = (element) => {
    const range = document.createRange();
    range.selectNodeContents(element);
    return plain(range.getBoundingClientRect());
  };
  for (const list of document.querySelectorAll('.list')) list.style.display = list.id === id ? '' : 'none';
  const list = document.getElementById(id);
  list.style.height = document.body.clientHeight - 33;
  const rows = [...list.children].slice(1);
  for (const row of rows) row.children[1].style.display = '';
  const place = list.getBoundingClientRect();
  return {
    list: { left: place.left, right: place.left + list.clientWidth, overflow: list.scrollWidth - list.clientWidth },
    rows: rows.map((row) => {
      const [name, version] = row.children[0].children;
      const [description, cell] = row.children[1].children[0].children;
      return { row: box(row), name: box(name), nameText: text(name), version: box(version), versionText: text(version),
               panel: box(row.children[1]), description: box(description), descriptionText: text(description),
               cell: box(cell), buttons: [...cell.children].map(box), title: name.innerText };
    }),
  };
}`;

test('the style sheet has nothing that document mode 5 does not know', async () => {
  const [, sheet] = /<style[^>]*>(.*)<\/style>/s.exec(page);
  const read = await browser.page.evaluate(`standin.quirksSheet(${JSON.stringify(sheet)})`);
  const rules = (text) => text.match(/\{/g).length;
  const declarations = (text) => text.match(/[{;]\s*[-a-z]+\s*:/g).length;
  // The rules that the browser gets in addition, so that inline elements take a width.
  const own = read.replace(/:where\([^{]*\{display:inline-block\}/g, '');
  assert.equal(rules(own), rules(sheet));
  assert.equal(declarations(own), declarations(sheet));
});

const covers = (a, b) => a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
const contains = (outer, inner) => inner.left >= outer.left && inner.right <= outer.right;

for (const width of [500, 760, 1400]) {
  for (const id of kLists) {
    test(`nothing of ${id} is cut off or covered at a width of ${width}`, async () => {
      await browser.page.send('Emulation.setDeviceMetricsOverride',
        { width, height: 430, deviceScaleFactor: 1, mobile: false });
      const { list, rows } = await browser.page.evaluate(`(${kMeasure})(${JSON.stringify(id)})`);
      assert.ok(list.right <= width && list.overflow === 0, JSON.stringify(list));
      assert.equal(rows.length, 8);
      for (const row of rows) {
        for (const part of ['row', 'name', 'nameText', 'version', 'versionText', 'panel', 'description',
                            'descriptionText', 'cell']) {
          assert.ok(contains(list, row[part]), `${row.title}: the ${part} leaves the list`);
        }
        assert.equal(row.name.top, row.version.top, `${row.title}: name and version stand on one line`);
        assert.equal(row.description.top, row.cell.top, `${row.title}: text and buttons stand on one line`);
        assert.ok(!covers(row.nameText, row.versionText), `${row.title}: the name covers the version`);
        assert.ok(row.name.bottom <= row.panel.top, `${row.title}: the panel covers the name`);
        for (const button of row.buttons) {
          assert.ok(contains(list, button), `${row.title}: a button leaves the list`);
          assert.ok(contains(row.row, button) && button.bottom <= row.row.bottom, `${row.title}: a button leaves its row`);
          assert.ok(!covers(row.descriptionText, button), `${row.title}: the text covers a button`);
          assert.ok(button.right - button.left === 70 && button.bottom - button.top === 22, `${row.title}: a button's size`);
        }
        const tops = new Set(row.buttons.map(({ top }) => top));
        assert.ok(tops.size <= 1, `${row.title}: buttons stand on one line`);
      }
      // Long names make their row higher, and can be read to their end.
      const [short, long] = ['Notes', 'A name that goes on'].map((start) => rows.find(({ title }) => title.startsWith(start)));
      assert.ok(width === 1400 || long.name.bottom - long.name.top > short.name.bottom - short.name.top);
    });
  }
}

test('the tabs and the category controls stand side by side at the smallest width', async () => {
  await browser.page.send('Emulation.setDeviceMetricsOverride',
    { width: 500, height: 430, deviceScaleFactor: 1, mobile: false });
  const right = (selector) => browser.page.evaluate(
    `[...document.querySelectorAll(${JSON.stringify(selector)})].at(-1).getBoundingClientRect().right`);
  assert.ok((await right('#itabencloser img')) <= 500);
  assert.ok((await right('#category input')) <= (await right('#category')));
});
