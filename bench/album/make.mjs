// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Writes contacts for measuring: make.mjs CONTACTS PICTURES. The same ones each time.
import { deflateSync } from 'node:zlib';

const [contacts, pictures] = process.argv.slice(2).map(Number);

let state = 20;
function Random(below) {
  state ^= state << 13;
  state ^= state >>> 17;
  state ^= state << 5;
  return (state >>> 0) % below;
}
const Pick = (list) => list[Random(list.length)];

const kTable = Uint32Array.from({ length: 256 }, (_, n) => {
  for (let k = 0; k < 8; ++k) n = n & 1 ? 0xedb88320 ^ (n >>> 1) : n >>> 1;
  return n >>> 0;
});
function Crc(bytes) {
  let crc = 0xffffffff;
  for (const byte of bytes) crc = kTable[(crc ^ byte) & 255] ^ (crc >>> 8);
  return (crc ^ 0xffffffff) >>> 0;
}
function Chunk(type, body) {
  const bytes = Buffer.concat([Buffer.alloc(4), Buffer.from(type), body, Buffer.alloc(4)]);
  bytes.writeUInt32BE(body.length, 0);
  bytes.writeUInt32BE(Crc(bytes.subarray(4, -4)), bytes.length - 4);
  return bytes;
}
// A square of noise, of 20 to 40 KB.
function Png() {
  const side = 82 + Random(34);
  const rows = Buffer.alloc(side * (1 + side * 3));
  for (let i = 0; i < rows.length; ++i) rows[i] = i % (1 + side * 3) === 0 ? 0 : Random(256);
  const header = Buffer.from([0, 0, 0, side, 0, 0, 0, side, 8, 2, 0, 0, 0]);
  return Buffer.concat([
    Buffer.from('\x89PNG\r\n\x1a\n', 'latin1'),
    Chunk('IHDR', header),
    Chunk('IDAT', deflateSync(rows, { level: 1 })),
    Chunk('IEND', Buffer.alloc(0)),
  ]);
}

const kGiven = [
  'Ann',
  'Jürgen',
  'Zoë',
  'Łukasz',
  'Mary',
  'Søren',
  'Íris',
  'Tom',
  'Chloé',
  'Pat',
  'Noor',
  'Emil',
];
const kFamily = [
  'Lee',
  'Müller',
  'Strauß',
  'Nowak',
  'O’Brien',
  'Ångström',
  'García',
  'Smith',
  'Dvořák',
  'Meyer',
];
const kJapanese = [
  ['山田', 'ヤマダ'],
  ['佐藤', 'サトウ'],
  ['鈴木', 'スズキ'],
  ['高橋', 'タカハシ'],
];
const kTowns = ['Reading', 'Köln', 'Málaga', 'Łódź', 'Ōsaka', 'Besançon'];
const Two = (number) => String(number).padStart(2, '0');

function Card(i) {
  const lines = ['BEGIN:VCARD', 'VERSION:2.1'];
  const Add = (name, value) =>
    lines.push(`${name}${/^[\x20-\x7e]*$/.test(value) ? '' : ';CHARSET=UTF-8'}:${value}`);
  if (i % 5 === 0) {
    const [family, sound] = Pick(kJapanese);
    Add('N', `${family};花子${i};;;`);
    Add('SOUND;X-IRMC-N', `${sound};ハナコ;;;`);
  } else {
    Add('N', `${Pick(kFamily)}${i};${Pick(kGiven)};;;`);
  }
  Add('TEL;CELL;PREF', `+49 17${Random(10)} ${1000000 + Random(9000000)}`);
  Add('TEL;HOME', `0${30 + Random(60)} ${100000 + Random(900000)}`);
  Add('EMAIL;INTERNET', `person${i}@example.org`);
  Add('ADR;HOME', `;;${1 + Random(200)} Orchard Lane;${Pick(kTowns)};;${10000 + Random(90000)};`);
  Add('ORG', `Example ${Random(400)} Ltd`);
  Add('NOTE', `Met in ${Pick(kTowns)}, ${1990 + Random(30)}. Likes walks and long letters.`);
  if (i % 3 === 0) {
    Add('BDAY', `${1940 + Random(70)}-${Two(1 + Random(12))}-${Two(1 + Random(28))}`);
  }
  Add('X-GROUP', `Group ${Random(9)}`);
  if (i % Math.ceil(contacts / pictures) === 0) {
    lines.push(
      'PHOTO;ENCODING=BASE64;TYPE=PNG:',
      ...Png()
        .toString('base64')
        .replace(/.{1,72}/g, ' $&\n')
        .split('\n'),
    );
  }
  lines.push('END:VCARD', '');
  return lines.join('\r\n');
}

for (let i = 0; i < contacts; ++i) {
  if (!process.stdout.write(Card(i))) {
    await new Promise((resolve) => process.stdout.once('drain', resolve));
  }
}
