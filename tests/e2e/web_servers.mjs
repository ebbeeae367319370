// nginx and Apache as Debian ships them, on ports of loopback, configured by the lines that
// docs/formats.md gives to operators.
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import net from 'node:net';
import os from 'node:os';
import path from 'node:path';
import { UpdateSource } from '../../standins/update_source/server.mjs';
import { eventually, root } from './harness.mjs';

const kLoopback = '127.0.0.1';
const kModules = '/usr/lib/apache2/modules';

/** The page's lines that are fenced as `language`. */
function documented(language) {
  const page = fs.readFileSync(path.join(root, 'docs/formats.md'), 'utf8');
  return new RegExp(`^\`\`\`${language}\n(.*?)^\`\`\``, 'ms').exec(page)[1];
}

/** Two ports on which nobody listened a moment ago. */
async function freePorts() {
  const servers = [net.createServer(), net.createServer()];
  const ports = [];
  for (const server of servers) {
    server.listen(0, kLoopback);
    await once(server, 'listening');
    ports.push(server.address().port);
  }
  await Promise.all(servers.map((server) => once(server.close(), 'close')));
  return ports;
}

const isRoot = process.getuid() === 0;

const nginx = {
  settle(folder, plain, secure) {
    const site = documented('nginx')
      .replace('listen 80;', `listen ${kLoopback}:${plain};`)
      .replace('listen 443 ssl;', `listen ${kLoopback}:${secure} ssl;`)
      .replaceAll('https://updates.example.org', `https://${kLoopback}:${secure}`)
      .replaceAll('server_name updates.example.org;', `server_name ${kLoopback};`);
    const temporary = ['client_body', 'proxy', 'fastcgi', 'uwsgi', 'scgi'];
    return `${isRoot ? 'user www-data;\n' : ''}pid ${folder}/pid;
error_log ${folder}/error.log;
events {}
http {
include /etc/nginx/mime.types;
access_log ${folder}/access.log;
${temporary.map((name) => `${name}_temp_path ${folder}/${name};`).join('\n')}
${site}}
`;
  },
  command: (file) => ['/usr/sbin/nginx', ['-c', file, '-g', 'daemon off;']],
};

const apache = {
  settle(folder, plain, secure) {
    const site = documented('apache')
      .replace('*:80', `${kLoopback}:${plain}`)
      .replace('*:443', `${kLoopback}:${secure}`)
      .replaceAll('https://updates.example.org', `https://${kLoopback}:${secure}`)
      .replaceAll('ServerName updates.example.org', `ServerName ${kLoopback}`);
    const modules = ['mpm_event', 'authz_core', 'ssl', 'alias', 'filter', 'deflate', 'mime', 'socache_shmcb'];
    return `ServerRoot ${folder}
DefaultRuntimeDir ${folder}
PidFile ${folder}/pid
Mutex file:${folder} default
ServerName ${kLoopback}
${modules.map((name) => `LoadModule ${name}_module ${kModules}/mod_${name}.so`).join('\n')}
${isRoot ? 'User www-data\nGroup www-data\n' : ''}TypesConfig /etc/mime.types
Listen ${kLoopback}:${plain}
Listen ${kLoopback}:${secure}
ErrorLog ${folder}/error.log
LogFormat "%h %l %u %t \\"%r\\" %>s %O" combined
CustomLog ${folder}/access.log combined
${site}`;
  },
  command: (file) => ['/usr/sbin/apache2', ['-f', file, '-D', 'FOREGROUND']],
};

const kinds = { nginx, Apache: apache };
export const webServers = Object.keys(kinds);

const accepts = (port) =>
  new Promise((resolve) => {
    const connection = net.connect(port, kLoopback, () => resolve(true) || connection.destroy());
    connection.on('error', () => resolve(false));
  });

/** A web server that serves its own folder. */
export class WebServer {
  #process;
  #folder;
  #published = 0;

  /** `kind` is one of `webServers`. */
  static async start(kind) {
    for (;;) {
      const server = new WebServer();
      if (await server.#begin(kinds[kind])) return server;
      const said = fs.readFileSync(path.join(server.#folder, 'said'), 'utf8');
      await server.close();
      // Somebody else took one of the ports first.
      if (!/address already in use/i.test(said)) throw new Error(`${kind} has ended: ${said}`);
    }
  }

  async #begin({ settle, command }) {
    this.#folder = fs.mkdtempSync(path.join(os.tmpdir(), 'kitbay-web-'));
    fs.chmodSync(this.#folder, 0o755);
    this.served = path.join(this.#folder, 'served');
    fs.mkdirSync(this.served);
    const { key, cert } = UpdateSource.certificates().identity('good');
    fs.writeFileSync(path.join(this.#folder, 'updates.key'), key, { mode: 0o600 });
    fs.writeFileSync(path.join(this.#folder, 'updates.pem'), cert);
    [this.plainPort, this.securePort] = await freePorts();
    const file = path.join(this.#folder, 'server.conf');
    const text = settle(this.#folder, this.plainPort, this.securePort)
      .replaceAll('/etc/ssl/updates', `${this.#folder}/updates`)
      .replaceAll('/srv/updates', this.served);
    fs.writeFileSync(file, text);
    const said = fs.openSync(path.join(this.#folder, 'said'), 'w');
    const [program, words] = command(file);
    this.#process = spawn(program, words, { stdio: ['ignore', said, said] });
    fs.closeSync(said);
    let hasEnded = false;
    this.#process.once('exit', () => (hasEnded = true));
    await eventually(`${program} that answers`, async () => hasEnded || accepts(this.securePort));
    return !hasEnded;
  }

  /**
   * Publishes a file in one step, as an operator should, dated before the test and after what was
   * there: Apache does not trust the date of a file written in the current second, and nginx counts
   * only whole seconds.
   */
  publish(name, content) {
    fs.writeFileSync(path.join(this.served, `${name}.new`), content);
    const written = Date.now() / 1000 - 24 * 3600 + 60 * ++this.#published;
    fs.utimesSync(path.join(this.served, `${name}.new`), written, written);
    fs.renameSync(path.join(this.served, `${name}.new`), path.join(this.served, name));
  }

  /** The status of each answer so far, according to the server's own log: "GET /a.xml 200". */
  answers() {
    const log = fs.readFileSync(path.join(this.#folder, 'access.log'), 'utf8');
    return [...log.matchAll(/"(GET \S+) HTTP\/[\d.]+" (\d+)/g)].map(([, request, status]) => `${request} ${status}`);
  }

  async close() {
    if (this.#process.exitCode === null) {
      const ended = once(this.#process, 'exit');
      this.#process.kill('SIGTERM');
      await ended;
    }
    fs.rmSync(this.#folder, { recursive: true });
  }
}

/** A relay to a port, whose `n`th connection is cut after `limits[n]` bytes of answers. */
export async function relayTo(port, limits) {
  const left = [...limits];
  const relay = net.createServer((near) => {
    let limit = left.shift() ?? Infinity;
    const far = net.connect(port, kLoopback);
    const end = () => near.destroy() && far.destroy();
    near.on('error', end).on('close', end).pipe(far);
    far.on('error', end).on('close', () => near.end());
    far.on('data', (bytes) => {
      near.write(bytes.subarray(0, limit));
      limit -= bytes.length;
      if (limit <= 0) {
        far.destroy();
        near.end();
      }
    });
  });
  relay.listen(0, kLoopback);
  await once(relay, 'listening');
  return relay;
}

