// The page follows changes of the user's colours.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { picture, probe, Program, starter, Suite } from './harness.mjs';

let suite;
let kitbay;
let page;

before(async () => {
  suite = await Suite.layOut();
  kitbay = Program.start(starter, '--with', 'other_colours.dll', `${suite.windowsFolder}\\Kitbay\\Kitbay.exe`);
  page = await kitbay.page();
  await page.waitFor(`document.querySelectorAll('#installedchannels > div').length === 6`);
  await page.settled();
  await kitbay.click('#installedchannels > div > span > font:first-child', 1);
});
after(() => kitbay.dispose());

/** The colours of the page, of a closed row and of the strip, and the folders of the tab images. */
const looks = () => page.eval(`(() => {
  const colours = (element) => {
    const { backgroundColor, color } = getComputedStyle(element);
    return [backgroundColor, color].map((rgb) => rgb.match(/\\d+/g).map(Number).join(' '));
  };
  return {
    page: colours(document.body), row: colours(installedchannels.children[3]),
    strip: colours(document.getElementById('category')),
    folders: [...itabencloser.children].map(({ src }) => src.split('/').slice(-3, -1).join('/')),
    loaded: [...itabencloser.children].every(({ complete, naturalWidth }) => complete && naturalWidth > 0),
  };
})()`);

const folderIs = (folder) => page.waitFor(
  `[...itabencloser.children].every(({ src, complete }) => complete && src.includes('/${folder}/'))`);

test('the page follows dark colours at once, and the usual ones again', async () => {
  const usual = await looks();
  assert.deepEqual(usual.row, ['255 255 255', '0 0 0']);
  const dark = ['0 0 0', '255 255 255'];
  await probe('signal', 'Kitbay.Tests.OtherColours');
  await folderIs('tabs/dark100');
  await page.waitFor(`getComputedStyle(document.body).backgroundColor === 'rgb(0, 0, 0)'`);
  assert.deepEqual(await looks(), {
    page: dark, row: dark, strip: dark, folders: ['tabs/dark100', 'tabs/dark100', 'tabs/dark100'], loaded: true,
  });
  await page.settled();
  await picture('dark-colours');

  await probe('signal', 'Kitbay.Tests.OtherColours');
  await folderIs('Kitbay');
  await page.waitFor(`getComputedStyle(document.body).backgroundColor !== 'rgb(0, 0, 0)'`);
  assert.deepEqual(await looks(), usual);
  assert.deepEqual(suite.logEntries(), []);
});
