// The answers of a server that can identify its files by an entity tag and a date, so that clients
// can ask for what has changed and for what is missing.
import { createHash } from 'node:crypto';

const kDate = 'Sat, 21 Nov 2026 10:15:30 GMT';

export const tagOf = (content) => `"${createHash('sha256').update(content).digest('hex').slice(0, 16)}"`;

/** {status, fields, body} of the answer to a request with `headers` for `content`. */
export function validatedAnswer(headers, content) {
  const etag = tagOf(content);
  const fields = { ETag: etag, 'Last-Modified': kDate, 'Accept-Ranges': 'bytes' };
  const known = headers['if-none-match'];
  if (known ? known === etag : headers['if-modified-since'] === kDate) {
    return { status: 304, fields, body: Buffer.alloc(0) };
  }
  const [, first] = /^bytes=(\d+)-$/.exec(headers.range ?? '') ?? [];
  if (first === undefined || ![undefined, etag].includes(headers['if-range'])) {
    return { status: 200, fields: { ...fields, 'Content-Length': content.length }, body: content };
  }
  if (Number(first) >= content.length) {
    return { status: 416, fields: { 'Content-Range': `bytes */${content.length}` }, body: Buffer.alloc(0) };
  }
  const body = content.subarray(Number(first));
  const range = `bytes ${first}-${content.length - 1}/${content.length}`;
  return { status: 206, fields: { ...fields, 'Content-Range': range, 'Content-Length': body.length }, body };
}
