// The page by keyboard alone, from the tab that was chosen to the button of an open row.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { after, before, test } from 'node:test';
import { promisify } from 'node:util';
import { Suite } from './harness.mjs';

const run = promisify(execFile);

let suite;
let kitbay;
let page;

before(async () => {
  suite = await Suite.layOut();
  kitbay = suite.start();
  page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
});
after(() => kitbay.dispose());

/** Presses a key, and waits until what has the focus fits. */
async function press(key, expected) {
  await run('xdotool', ['key', key]);
  await page.waitFor(`(({ parentElement, id, value }) => [parentElement?.id, id, value].join(' '))(
    document.activeElement) === ${JSON.stringify(expected)}`);
}

test('Tab and the arrows reach tabs, rows and the button of a row that Enter has opened', async () => {
  await kitbay.click('#itabencloser #trans');
  await press('Right', 'itabencloser addons ');
  await run('xdotool', ['key', 'Return']);
  await page.waitFor(`document.querySelectorAll('#installedaddons > div').length === 10`);
  await press('Tab', 'installedaddons 1 ');
  await press('Down', 'installedaddons 2 ');
  await run('xdotool', ['key', 'Return']);
  await page.waitFor(`installedaddons.children[2].children[1].style.display === ''`);
  assert.equal(await page.eval(`installedaddons.children[2].getAttribute('aria-expanded')`), 'true');
  assert.equal(
    await page.eval(`installedaddons.children[2].getAttribute('aria-label')`),
    'Übersetzer, Version 1.2.-25536.0',
  );
  await press('Tab', ' btninstalled Remove');
  await press('shift+Tab', 'installedaddons 2 ');
  assert.deepEqual(suite.logEntries(), []);
});
