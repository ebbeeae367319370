// Certificates for a source with TLS: created on the spot, for loopback only, and never kept in the
// tree.
import { execFileSync } from 'node:child_process';
import { createHash, X509Certificate } from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';

// Wine compares the host only with DNS names, even if it is an address.
const kLoopback = 'IP:127.0.0.1,DNS:127.0.0.1,DNS:localhost';

/**
 * What distinguishes the certificates: the names, the days of validity, how many days ago they began, and the
 * signer.
 */
const kKinds = {
  good: { names: kLoopback, days: 30 },
  'wrong-name': { names: 'DNS:updates.example', days: 30 },
  expired: { names: kLoopback, days: 1, daysAgo: 2 },
  'self-signed': { names: kLoopback, days: 30, selfSigned: true },
};

function run(folder, program, ...words) {
  execFileSync(program, words, { cwd: folder, stdio: ['ignore', 'ignore', 'pipe'] });
}

const openssl = (folder, ...words) => run(folder, 'openssl', ...words);

const newKey = (name) => ['-newkey', 'rsa:2048', '-nodes', '-keyout', `${name}.key`];

function makeLeaf(folder, name, { names, days, daysAgo = 0, selfSigned }) {
  const subject = ['-subj', `/CN=Sample update source (${name})`];
  const extensions = ['-addext', `subjectAltName=${names}`, '-addext', 'extendedKeyUsage=serverAuth'];
  if (selfSigned) {
    openssl(folder, 'req', '-x509', ...newKey(name), ...subject, ...extensions, '-days', `${days}`,
      '-out', `${name}.pem`);
    return;
  }
  openssl(folder, 'req', ...newKey(name), ...subject, ...extensions, '-out', `${name}.csr`);
  // Not every version of openssl takes the day on which a certificate begins.
  run(folder, 'faketime', '-f', `-${daysAgo}d`, 'openssl', 'x509', '-req', '-in', `${name}.csr`,
    '-CA', 'ca.pem', '-CAkey', 'ca.key', '-CAcreateserial', '-copy_extensions', 'copy', '-days', `${days}`,
    '-out', `${name}.pem`);
}

function makeAll(folder) {
  openssl(folder, 'req', '-x509', ...newKey('ca'), '-subj', '/CN=Sample update source (authority)',
    '-addext', 'keyUsage=critical,keyCertSign,cRLSign', '-days', '30', '-out', 'ca.pem');
  for (const [name, kind] of Object.entries(kKinds)) makeLeaf(folder, name, kind);
}

function areUsable(folder) {
  try {
    const good = new X509Certificate(fs.readFileSync(path.join(folder, 'good.pem')));
    return Date.parse(good.validTo) - Date.now() > 24 * 3600 * 1000;
  } catch {
    return false;
  }
}

/**
 * An authority and the certificates it issued, in a folder; created there if missing or too old.
 */
export class Certificates {
  #folder;

  constructor(folder) {
    this.#folder = folder;
    if (areUsable(folder)) return;
    fs.mkdirSync(path.dirname(folder), { recursive: true });
    const making = fs.mkdtempSync(`${folder}.making-`);
    makeAll(making);
    fs.rmSync(folder, { recursive: true, force: true });
    fs.renameSync(making, folder);
  }

  /** The path of the authority's certificate, as PEM. */
  get authorityFile() {
    return path.join(this.#folder, 'ca.pem');
  }

  /** Key and certificate of a kind: "good", "wrong-name", "expired" or "self-signed". */
  identity(kind) {
    if (!(kind in kKinds)) throw new Error(`There is no certificate "${kind}"`);
    const read = (ending) => fs.readFileSync(path.join(this.#folder, `${kind}.${ending}`));
    return { key: read('key'), cert: read('pem') };
  }

  /**
   * The authority as a registry file to import: below HKEY_CURRENT_USER, where Windows keeps the root
   * certificates that only this user trusts. Newer versions of Wine delete from those of the machine
   * what the system below it does not trust.
   */
  get registryEntry() {
    const der = new X509Certificate(fs.readFileSync(this.authorityFile)).raw;
    const thumbprint = createHash('sha1').update(der).digest();
    const property = (id, data) => {
      const heading = Buffer.alloc(12);
      heading.writeUInt32LE(id, 0);
      heading.writeUInt32LE(1, 4);
      heading.writeUInt32LE(data.length, 8);
      return Buffer.concat([heading, data]);
    };
    const kSha1Hash = 3;
    const kCertificate = 32;
    const blob = Buffer.concat([property(kSha1Hash, thumbprint), property(kCertificate, der)]);
    const key = 'HKEY_CURRENT_USER\\Software\\Microsoft\\SystemCertificates\\Root\\Certificates\\';
    const bytes = [...blob].map((byte) => byte.toString(16).padStart(2, '0')).join(',');
    return `REGEDIT4\r\n\r\n[${key}${thumbprint.toString('hex').toUpperCase()}]\r\n"Blob"=hex:${bytes}\r\n`;
  }
}
