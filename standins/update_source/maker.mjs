// The maker of a source's manifests, who signs them. Written only from docs/formats.md, so that
// what these signatures prove does not depend on the program's own way of creating them.
import crypto from 'node:crypto';

const kPrivateKeyStart = Buffer.from('302e020100300506032b657004220420', 'hex');
const kDay = 24 * 60 * 60 * 1000;

/** The date `days` from today, in a manifest's format. */
export function dayFromToday(days) {
  const date = new Date(Date.now() + days * kDay);
  return [date.getFullYear(), date.getMonth() + 1, date.getDate()].map((part) => String(part).padStart(2, '0')).join('-');
}

/** A maker with its own key; the same number is the same maker. */
export class Maker {
  #secret;

  constructor(number) {
    const seed = Buffer.alloc(32, number);
    this.#secret = crypto.createPrivateKey({
      key: Buffer.concat([kPrivateKeyStart, seed]),
      format: 'der',
      type: 'pkcs8',
    });
  }

  /** The public key, as users get it. */
  get key() {
    const key = crypto.createPublicKey(this.#secret).export({ format: 'der', type: 'spki' });
    return key.subarray(-32).toString('hex');
  }

  /** The manifest `file` with its signature at the end. */
  sign(manifest, { file = 'ovalink.xml', serial, until = dayFromToday(30) }) {
    const start = `${manifest.toString().trimEnd()}\n<!--<signature key="${this.key.slice(0, 16)}" file="${file}" ` +
      `serial="${serial}" until="${until}" ed25519="`;
    return `${start}${crypto.sign(null, Buffer.from(start), this.#secret).toString('hex')}"/>-->\n`;
  }
}

/** The manifest of a source with the size and the digest of each package that the source serves. */
export function withDigests(source, manifest) {
  return manifest.toString().replace(/<url>[^<]*?(\/packages\/[^<]*)<\/url>/g, (url, path) => {
    const content = source.contentOf(path);
    if (content === null) return url;
    const sum = crypto.createHash('sha256').update(content).digest('hex');
    return `${url}<size>${content.length}</size><sha256>${sum}</sha256>`;
  });
}
