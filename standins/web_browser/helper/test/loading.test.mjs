import assert from 'node:assert/strict';
import { once } from 'node:events';
import { after, before, beforeEach } from 'node:test';
import http from 'node:http';
import { kMarkupOnly, test, TestBrowser } from './support.mjs';

const kGif = Buffer.from('R0lGODlhAQABAIAAAP8AAP///yH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==', 'base64');

let browser;
let server;
let served;
before(async () => {
  browser = await TestBrowser.start({
    'Program Files/App/Page.html': '<body><img id=i src="Images/A%20b.gif">',
    'Program Files/App/images/a b.GIF': kGif,
    'frame.html': 'frame', 'other.html': '<p id=other>', 'script.js': 'document.title = "ran"',
    'a#b.html': '<p id=hash>',
  });
  served = [];
  server = http.createServer((request, response) => {
    served.push(request.url);
    response.end('x');
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  server.on('connection', () => served.push('connection'));
});
after(async () => {
  server.close();
  await browser.close();
});
beforeEach(() => {
  browser.page.requests.length = 0;
  browser.cancels = () => false;
  served.length = 0;
});

test('files are found through the drive letters without regard to case', async () => {
  await browser.load('program files\\APP\\page.HTML');
  assert.equal(browser.page.url, 'file:///C:/program%20files/APP/page.HTML');
  assert.equal(await browser.page.evaluate('document.getElementById("i").naturalWidth'), 1);
});

test('a number sign in a file name is part of the name', async () => {
  await browser.load('a#b.html');
  assert.equal(await browser.page.evaluate('document.getElementById("hash") !== null'), true);
});

const kHostile = `<body onload="document.title='ran'"><script>document.title='ran'</script>
  <script src=script.js></script><img src=none.gif onerror="document.title='ran'">
  <iframe src=frame.html></iframe><iframe srcdoc="<p>inner"></iframe><embed src=frame.html>
  <svg onload="document.title='ran'"></svg><a id=js href="javascript:document.title='ran'">x</a>`;

test('markup runs nothing and opens no frame when the host has switched that off', async () => {
  await browser.load(kHostile);
  await browser.page.evaluate('document.body.insertAdjacentHTML("beforeEnd", ' +
    JSON.stringify('<img src=none2.gif onerror="document.title=\'ran\'"><iframe src=frame.html></iframe>') + ')');
  await browser.page.evaluate('document.getElementById("js").click()');
  // An image that is added last fails last, after the handlers of the others have run.
  await browser.page.evaluate(`new Promise((resolve) => {
    const image = new Image();
    image.addEventListener('error', resolve);
    image.src = 'none3.gif';
  }).then(() => true)`);
  assert.equal(await browser.page.evaluate('document.title'), '');
  const answered = browser.page.requests.filter(({ refused }) => !refused).map(({ url }) => url);
  assert.deepEqual(answered, ['file:///C:/page.html']);
  const { frameTree } = await browser.page.send('Page.getFrameTree');
  for (const { frame } of frameTree.childFrames ?? []) assert.notEqual(frame.url, 'file:///C:/frame.html');
});

test('the same markup runs when the host allows it', async () => {
  await browser.load(kHostile, 0x10);
  await browser.page.evaluate('standin.waitUntil(() => document.title === "ran")');
  assert.equal(await browser.page.evaluate('document.title'), 'ran');
  const answered = browser.page.requests.filter(({ refused }) => !refused).map(({ url }) => url);
  assert.ok(answered.includes('file:///C:/frame.html'));
  assert.ok(answered.includes('file:///C:/script.js'));
});

test('a dialog of a script keeps nobody waiting', async () => {
  await browser.load('<script>document.title = String(confirm("Wait?"))</script>', 0x10);
  assert.equal(await browser.page.evaluate('document.title'), 'false');
});

test('images load only if the host allows them', async () => {
  await browser.load('Program Files\\App\\Page.html', kMarkupOnly & ~0x10);
  assert.equal(await browser.page.evaluate('document.getElementById("i").naturalWidth'), 0);
  assert.deepEqual(browser.page.requests.at(-1),
    { url: 'file:///C:/Program%20Files/App/Images/A%20b.gif', refused: true, reason: 'images are off' });
});

test('nothing but local files is requested, from any server', async () => {
  const base = `http://127.0.0.1:${server.address().port}`;
  await browser.load(`<img src="${base}/i.gif"><link rel=stylesheet href="${base}/s.css">
    <link rel=preconnect href="${base}"><link rel=prefetch href="${base}/p">
    <link rel="dns-prefetch" href="//example.invalid"><style>@import "${base}/t.css";</style>
    <video src="${base}/v"></video><img src="file://server/share/i.gif">`);
  await browser.frames.fresh();
  const refused = browser.page.requests.filter((request) => request.refused).map(({ url }) => url);
  assert.ok(refused.includes(`${base}/i.gif`));
  assert.ok(refused.includes(`${base}/s.css`));
  assert.deepEqual(served, []);
});

test('a navigation that the host cancels leaves the page as it is', async () => {
  await browser.load('other.html');
  browser.cancels = (url) => url.includes('frame.html');
  const asked = once(browser.page, 'beforeNavigate');
  await browser.page.evaluate('void (location.href = "frame.html")');
  const [{ url }] = await asked;
  assert.equal(url, 'file:///C:/frame.html');
  await browser.page.evaluate('standin.waitUntil(() => document.getElementById("other"))');
  await browser.frames.fresh();
  assert.equal(await browser.page.evaluate('location.pathname'), '/C:/other.html');
  assert.deepEqual(browser.page.requests.at(-1), { url, refused: true, reason: 'cancelled by the host' });
});

test('a refresh in the markup is a navigation that the host can cancel', async () => {
  browser.cancels = (url) => url.includes('other.html');
  const refreshed = new Promise((resolve) => {
    browser.page.on('beforeNavigate', ({ url }) => url.includes('other.html') && resolve());
  });
  await browser.load('<meta http-equiv=refresh content="0;url=other.html"><p id=stays>');
  await refreshed;
  assert.equal(await browser.page.evaluate('document.getElementById("stays") !== null'), true);
});

test('a page that does not exist fails and leaves the current one', async () => {
  await browser.load('other.html');
  const failed = once(browser.page, 'failed');
  browser.page.navigate('C:\\missing.html', kMarkupOnly);
  const [{ url, status }] = await failed;
  assert.deepEqual([url, status], ['file:///C:/missing.html', 404]);
  assert.equal(await browser.page.evaluate('document.getElementById("other") !== null'), true);
});

test('the error page of a failed navigation has the URL that could not be loaded', async () => {
  await browser.load('other.html');
  const complete = once(browser.page, 'complete');
  await browser.page.showError('file:///C:/missing.html');
  assert.deepEqual(await complete, [{ url: 'file:///C:/missing.html' }]);
  assert.equal(await browser.page.evaluate('document.body.innerText'), 'This page cannot be displayed.');
});

test('a page that is asked for before the error page has been requested is loaded', async (t) => {
  const { held, release } = browser.holdBack((method, params) => {
    const url = method === 'Fetch.requestPaused' ? params.request.url : '';
    if (url.endsWith('other.html')) release();
    return url.endsWith('missing.html');
  });
  t.after(release);
  browser.page.showError('file:///C:/missing.html').catch(() => {});
  await held;
  await browser.load('other.html', kMarkupOnly | 0x20000000);  // DLCTL_NO_CLIENTPULL
  assert.equal(await browser.page.evaluate('document.querySelector("#other") !== null'), true);
});

test('a navigation says whether it leads to a document', async () => {
  const asked = [];
  const listen = ({ url, document }) => asked.push([url.split('/').pop(), document]);
  browser.page.on('beforeNavigate', listen);
  browser.cancels = () => true;
  for (const name of ['other.html', 'package.zip']) await browser.page.navigate(`C:\\${name}`, kMarkupOnly);
  browser.page.off('beforeNavigate', listen);
  assert.deepEqual(asked, [['other.html', true], ['package.zip', false]]);
});

test('an empty page can be loaded', async () => {
  const complete = once(browser.page, 'complete');
  browser.page.navigate('about:blank', kMarkupOnly);
  const [{ url }] = await complete;
  assert.equal(url, 'about:blank');
  assert.equal(await browser.page.evaluate('document.body.innerHTML'), '');
});
