// Usage: node main.mjs PORT TOKEN
// Connects to the host twice on 127.0.0.1: first for its calls, then for notices of what happens on the
// page. Ends, with its browser, when either connection or the browser does.
import fs from 'node:fs';
import net from 'node:net';
import { once } from 'node:events';
import { BrowserPage } from './browser_page.mjs';
import { Chromium } from './chromium.mjs';
import { Frames } from './frames.mjs';
import { HostSession } from './host_session.mjs';
import { Input } from './input.mjs';
import { Inspection } from './inspection.mjs';
import { LocalFiles } from './local_files.mjs';
import { LineConnection } from './wire.mjs';

/**
 * The host's standard streams do not belong to the helper: whoever reads them would wait for the
 * helper's end too.
 */
function leaveStandardStreams() {
  const log = process.env.WEB_BROWSER_STANDIN_LOG || '/dev/null';
  for (const [descriptor, mode] of [[0, 'r'], [1, 'a'], [2, 'a']]) {
    fs.closeSync(descriptor);
    fs.openSync(descriptor === 0 ? '/dev/null' : log, mode);  // Takes the lowest free descriptor.
  }
}

async function dial(port, greeting) {
  const socket = net.connect(port, '127.0.0.1');
  await once(socket, 'connect');
  const connection = new LineConnection(socket);
  connection.send(greeting);
  return connection;
}

async function main([port, token]) {
  leaveStandardStreams();
  const browser = new Chromium();
  const end = async () => {
    await browser.close();
    process.exit(0);
  };
  process.on('exit', () => browser.kill());
  for (const signal of ['SIGTERM', 'SIGINT', 'SIGHUP']) process.on(signal, end);
  browser.pipe.on('end', end);

  const page = new BrowserPage(browser.pipe, new LocalFiles());
  await page.open();
  const frames = new Frames(page);
  const calls = await dial(port, { token, role: 'calls' });
  const notices = await dial(port, { token, role: 'notices' });
  for (const connection of [calls, notices]) connection.on('end', end);
  const input = new Input(page);
  const session = new HostSession({ calls, notices, page, frames, input });
  await frames.start();
  const inspectionFile = process.env.WEB_BROWSER_STANDIN_INSPECT;
  if (inspectionFile) await new Inspection({ page, frames, session, input }).open(inspectionFile);
}

main(process.argv.slice(2)).catch((error) => {
  console.error(error);
  process.exit(1);
});
