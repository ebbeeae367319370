// guide_pictures.mjs FOLDER: takes the pictures for the README and the user guide from the real
// program, at 100 and 150 %, in the usual colours and in high contrast. Run it under
// tools/with_display.
import path from 'node:path';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import {
  confirmMessage, eventually, isKitbay, MainClient, messages, patience, picture, probe, run, sourcesAnswered, Suite,
  windows, windowWhere, wine,
} from './harness.mjs';

const folder = path.resolve(process.argv[2]);
const kColors = 'HKCU\\Control Panel\\Colors';
const kDesktop = 'HKCU\\Control Panel\\Desktop';
const kThemes = 'HKCU\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager';
const kHighContrast = {
  ActiveBorder: '255 255 255', ActiveTitle: '128 0 128', ButtonFace: '0 0 0', ButtonHilight: '192 192 192',
  ButtonLight: '255 255 255', ButtonShadow: '128 128 128', ButtonDkShadow: '255 255 255', ButtonText: '255 255 255',
  GrayText: '63 242 63', Hilight: '26 235 255', HilightText: '0 0 0', Scrollbar: '64 64 64', TitleText: '255 255 255',
  Window: '0 0 0', WindowFrame: '255 255 255', WindowText: '255 255 255', Menu: '0 0 0', MenuText: '255 255 255',
};
const usual = new Map();

/** Sets a value of the user's, and remembers the previous one. */
async function set(key, name, data, type = 'REG_SZ') {
  const text = await wine('reg', 'query', key, '/v', name).catch(() => '');
  usual.set(`${key}|${name}`, /REG_\w+\s+(.*?)\s*$/m.exec(text)?.[1]);
  await wine('reg', 'add', key, '/v', name, '/t', type, '/d', data, '/f');
}

async function takeBack() {
  for (const [place, data] of usual) {
    const [key, name] = place.split('|');
    const type = name === 'LogPixels' ? 'REG_DWORD' : 'REG_SZ';
    if (data === undefined) await wine('reg', 'delete', key, '/v', name, '/f');
    else await wine('reg', 'add', key, '/v', name, '/t', type, '/d', data, '/f');
  }
  usual.clear();
}

/** A picture of the part of the screen that those windows cover. */
async function take(name, fits) {
  const places = (await windows()).filter(fits).map(({ place }) => place);
  const edge = (side, choose) => Math.max(0, choose(...places.map((place) => place[side])));
  const [left, top, right, bottom] = [edge(0, Math.min), edge(1, Math.min), edge(2, Math.max), edge(3, Math.max)];
  const file = await picture(name, folder);
  await run('convert', [file, '-crop', `${right - left}x${bottom - top}+${left}+${top}`, '+repage', '+dither',
    '-colors', '64', '-strip', '-define', 'png:compression-level=9', `PNG8:${file}`]);
  console.log(file);
}

/** The program with the addons shown and the first one open. */
async function withProgram(story) {
  const source = await UpdateSource.start();
  const suite = await Suite.layOut({ KITBAY_UPDATE_SOURCE: `${source.host}/ovalink.xml` });
  const client = new MainClient(suite);
  const kitbay = suite.start();
  try {
    const page = await kitbay.page();
    await page.waitFor(sourcesAnswered);
    await kitbay.click('#itabencloser #addons');
    await kitbay.click('#installedaddons > div > span > font:first-child', 1);
    await run('xdotool', ['mousemove', '1270', '1010']);
    await page.settled();
    await story(kitbay, client, page);
    await kitbay.close();
  } finally {
    await kitbay.dispose();
    await client.close();
    await source.close();
  }
}

patience.begin();
await withProgram(async (kitbay, client) => {
  await take('installed-addons', isKitbay);
  await probe('press', 'Kitbay', '&Directories');
  const isDialog = (window) => window.class === 'KitbayPreferenceWindow';
  const { caption } = await windowWhere('the dialog', isDialog);
  await take('update-sources', isDialog);
  await probe('press', caption, '&Close');
  await eventually('the end of the dialog', async () => !(await windows()).some(isDialog));
  await client.start();
  await kitbay.press('installedaddons', 'Chess', 'Update');
  await eventually('the question', async () => (await messages()).length > 0);
  await take('update-question', (window) => isKitbay(window) || MainClient.isWindow(window) || window.class === '#32770');
  await confirmMessage('Cancel');
});
for (const { name, dpi, colors } of [
  { name: 'installed-addons-at-150-percent', dpi: '144', colors: {} },
  { name: 'high-contrast', dpi: '96', colors: kHighContrast },
  { name: 'high-contrast-at-150-percent', dpi: '144', colors: kHighContrast },
]) {
  patience.begin();
  try {
    await set(kDesktop, 'LogPixels', dpi, 'REG_DWORD');
    for (const [color, value] of Object.entries(colors)) await set(kColors, color, value);
    if (colors === kHighContrast) await set(kThemes, 'ThemeActive', '0');
    await withProgram(() => take(name, isKitbay));
  } finally {
    await takeBack();
  }
}
