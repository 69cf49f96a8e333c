// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Contacts: as a card, and in full.

const kContacts = ReadRecords();
const kPictures = new Map();
for (const element of document.getElementsByClassName('picture')) {
  kPictures.set(Number(element.dataset.record), element);
}
const kPictureTypes = new Set(['image/jpeg', 'image/png', 'image/gif', 'image/bmp']);
const kMostPixels = 512 * 512;
const kWaysInACard = 3;

const TextsOf = (contact, ...names) =>
  contact.fields.filter(([name]) => names.includes(name)).map(([, text]) => text);
// What stands in for a name that there is none of, and whether it is a name too.
function StandIn(contact) {
  for (const field of ['organisation', 'mail', 'number']) {
    const text = TextsOf(contact, field).find(IsSeen);
    if (text !== undefined) return { text, isName: field === 'organisation' };
  }
  return { text: '', isName: false };
}
const IsNamed = (contact) => IsSeen(contact.name);
const NameOf = (contact) =>
  InOneLine(IsNamed(contact) ? contact.name : StandIn(contact).text) || Label('nameless');

// Days of records: YYYY-MM-DD, or --MM-DD without a year.
function ReadDay(text) {
  const parts = /^(?:(\d{4})|-)-(\d\d)-(\d\d)$/.exec(text);
  if (parts === null) return null;
  const [month, day] = [Number(parts[2]), Number(parts[3])];
  const year = parts[1] === undefined ? null : Number(parts[1]);
  const date = DayOf(year ?? 2000, month, day);
  return date.getUTCMonth() === month - 1 && date.getUTCDate() === day
    ? { year, month, day }
    : null;
}
function DayOf(year, month, day) {
  const date = new Date(0);
  date.setUTCFullYear(year, month - 1, day);
  return date;
}
const kWithYear = new Intl.DateTimeFormat(kLocale, { dateStyle: 'long', timeZone: 'UTC' });
const kWithoutYear = new Intl.DateTimeFormat(kLocale, {
  day: 'numeric',
  month: 'long',
  timeZone: 'UTC',
});
function DayText(text) {
  const day = ReadDay(text);
  if (day === null) return text;
  return (day.year === null ? kWithoutYear : kWithYear).format(
    DayOf(day.year ?? 2000, day.month, day.day),
  );
}

// Letters in place of a picture: those that the first and the last word begin with.
function Initials(name) {
  const firsts = InOneLine(name)
    .split(/\s+/)
    .map((word) => /[\p{L}\p{N}]\p{M}*/u.exec(word)?.[0]);
  const letters = firsts.filter((letter) => letter !== undefined);
  if (letters.length === 0) return '·';
  if (
    letters.length === 1 ||
    /[^\p{Script=Latin}\p{Script=Greek}\p{Script=Cyrillic}]/u.test(letters[0])
  ) {
    return letters[0].toUpperCase();
  }
  return letters[0].toUpperCase() + letters[letters.length - 1].toUpperCase();
}
function Tone(name) {
  let sum = 0;
  for (let i = 0; i < name.length; ++i) sum = (sum * 31 + name.charCodeAt(i)) % 65521;
  return `tone-${sum % 6}`;
}
// Its picture. One that can't be shown gives way to the letters, and Fail() is told.
function Face(record, Fail = () => {}) {
  const contact = kContacts[record];
  const element = kPictures.get(record);
  if (element === undefined) return Letters(contact);
  if (!kPictureTypes.has(element.dataset.type)) {
    Fail();
    return Letters(contact);
  }
  const picture = Make('img', { class: 'face', alt: '', decoding: 'async' });
  picture.src = `data:${element.dataset.type};base64,${element.textContent}`;
  const GiveWay = () => {
    picture.replaceWith(Letters(contact));
    Fail();
  };
  picture.addEventListener('error', GiveWay);
  picture.addEventListener('load', () => IsBlank(picture) && GiveWay());
  return picture;
}
// Whether a small picture has nothing to see: one that was cut may load all the same. Of a large
// one it isn't asked, as the page would wait for that.
function IsBlank(picture) {
  const { naturalWidth, naturalHeight } = picture;
  if (naturalWidth * naturalHeight > kMostPixels) return false;
  const canvas = Make('canvas', { width: 32, height: 32 });
  const context = canvas.getContext('2d', { willReadFrequently: true });
  context.drawImage(picture, 0, 0, canvas.width, canvas.height);
  const { data } = context.getImageData(0, 0, canvas.width, canvas.height);
  return data.every((byte) => byte === 0);
}
function Letters(contact) {
  const name = IsNamed(contact) ? (contact.short ?? contact.name) : StandIn(contact).text;
  return Make('span', {
    class: `face ${Tone(contact.name)}`,
    'aria-hidden': 'true',
    text: Initials(name),
  });
}

function WorkOf(contact) {
  const name = NameOf(contact);
  return TextsOf(contact, 'organisation', 'title')
    .map(InOneLine)
    .filter((text) => text !== name)
    .join(' · ');
}

// Of numbers, mails and addresses those that fit into a card.
function WaysOf(contact) {
  const rows = ['number', 'mail', 'address'].flatMap((name) =>
    contact.fields.filter((row) => row[0] === name),
  );
  const shown = new Set();
  for (const name of ['number', 'number', 'mail', 'address', 'number', 'mail']) {
    const row = rows.find((candidate) => candidate[0] === name && !shown.has(candidate));
    if (row !== undefined && shown.size < kWaysInACard) shown.add(row);
  }
  return rows.filter((row) => shown.has(row));
}
// The cell of a contact.
function MakeCard(record) {
  const contact = kContacts[record];
  const name = NameOf(contact);
  const open = Button({ class: 'open', title: name }, () => OpenContact(record), Isolated(name));
  const work = WorkOf(contact);
  const Way = ([field, text]) =>
    Make('li', { class: field }, Hidden(`${FieldTitle(field)}: `), LinkedText(field, text));
  return Make(
    'li',
    { class: 'card' },
    Face(record),
    Make(
      'div',
      { class: 'who' },
      Make('h3', {}, open, contact.favourite ? Star() : null),
      contact.phonetic ? Make('p', { class: 'phonetic' }, Isolated(contact.phonetic)) : null,
      work === '' ? null : Make('p', { class: 'work' }, Isolated(work)),
    ),
    Make('ul', { role: 'list' }, WaysOf(contact).map(Way)),
    contact.marks?.length
      ? Button({ class: 'mark' }, () => OpenContact(record, true), MarkBadge(contact))
      : null,
  );
}
const Star = () =>
  Make(
    'span',
    { class: 'star' },
    Make('span', { 'aria-hidden': 'true', text: '★' }),
    Hidden(FieldTitle('favourite')),
  );

// A contact in full. Rows of one field stand under one title.
function OpenContact(record, atMarks = false) {
  const contact = kContacts[record];
  const marks = MarkSection(contact);
  const name = Make('span', {}, Isolated(NameOf(contact)), ' ', contact.favourite ? Star() : null);
  const note = Make('p', { class: 'work', text: Label('no-picture') });
  note.hidden = true;
  kDialog.Open(
    name,
    Make(
      'div',
      { class: 'head' },
      Face(record, () => {
        note.hidden = false;
      }),
      Make(
        'div',
        {},
        contact.phonetic ? Make('p', { class: 'phonetic' }, Isolated(contact.phonetic)) : null,
        Make('p', { class: 'work' }, Isolated(WorkOf(contact))),
        note,
        Chips(contact.groups ?? []),
      ),
    ),
    Facts(FactsOf(contact)),
    marks,
    SourceLine(contact),
  );
  if (atMarks) kDialog.Show(marks);
}
function FactsOf(contact) {
  const titled = new Map();
  for (const [field, text, types = []] of contact.fields) {
    if (!titled.has(field)) titled.set(field, []);
    titled
      .get(field)
      .push({ text: kDayFields.has(field) ? DayText(text) : text, field, types: TypeText(types) });
  }
  return [...titled].map(([field, values]) => [FieldTitle(field), values]);
}
const kDayFields = new Set(['birthday', 'anniversary', 'event-day']);
const TypeText = (types) =>
  types
    .filter((word) => word !== 'unknown')
    .map(TypeWord)
    .join(', ');
const Chips = (groups) =>
  groups.length === 0
    ? null
    : Make(
        'ul',
        { class: 'chips', role: 'list', 'aria-label': FieldTitle('groups') },
        groups.map((group) => Make('li', {}, Isolated(group))),
      );
