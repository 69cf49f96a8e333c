// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The album of contacts.

const kContacts = ReadRecords();
const kPictures = new Map();
for (const element of document.getElementsByClassName('picture')) {
  kPictures.set(Number(element.dataset.record), element);
}
const kPictureTypes = new Set(['image/jpeg', 'image/png', 'image/gif', 'image/bmp']);
const kBirthdaysAhead = 8;
const kGroupsInARow = 12;

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
  picture.addEventListener('error', () => {
    picture.replaceWith(Letters(contact));
    Fail();
  });
  return picture;
}
function Letters(contact) {
  const name = IsNamed(contact) ? (contact.short ?? contact.name) : StandIn(contact).text;
  return Make('span', {
    class: `face ${Tone(contact.name)}`,
    'aria-hidden': 'true',
    text: Initials(name),
  });
}

const WorkOf = (contact) =>
  TextsOf(contact, 'organisation', 'title')
    .map(InOneLine)
    .filter((text) => text !== NameOf(contact))
    .join(' · ');

// The cell of a contact. Of numbers, mails and addresses it shows as many as fit.
function MakeCard(record) {
  const contact = kContacts[record];
  const open = Button({ class: 'open' }, () => OpenContact(record), Isolated(NameOf(contact)));
  const work = WorkOf(contact);
  const ways = Make('ul', { role: 'list' });
  const taken = ['number', 'number', 'mail', 'address', 'number', 'mail'];
  const rows = ['number', 'mail', 'address'].flatMap((name) =>
    contact.fields.filter((row) => row[0] === name),
  );
  const shown = new Set();
  for (const name of taken) {
    const row = rows.find((candidate) => candidate[0] === name && !shown.has(candidate));
    if (row !== undefined && shown.size < 3) shown.add(row);
  }
  for (const row of rows) {
    if (shown.has(row)) {
      ways.append(
        Make(
          'li',
          { class: row[0] },
          Hidden(`${FieldTitle(row[0])}: `),
          LinkedText(row[0], row[1]),
        ),
      );
    }
  }
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
    ways,
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

// All contacts in the language's order, those without a name behind the others.
function Sorted() {
  const { compare } = new Intl.Collator(kAlbum.lang);
  const keys = kContacts.map((contact) => {
    if (IsNamed(contact)) return { rank: 0, sort: contact.sort };
    const { text, isName } = StandIn(contact);
    return { rank: isName ? 0 : text !== '' ? 1 : 2, sort: text };
  });
  const order = kContacts.map((contact, record) => record);
  return order.sort((left, right) => {
    const [one, other] = [keys[left], keys[right]];
    return one.rank - other.rank || compare(one.sort, other.sort) || left - right;
  });
}

// Filters: any of the chosen groups, and all of the others that are chosen.
const kNoGroup = Symbol('no group');
const kFilters = { groups: new Set(), favourite: false, marks: false };
function PassesFilters(contact) {
  if (kFilters.favourite && !contact.favourite) return false;
  if (kFilters.marks && !contact.marks?.length) return false;
  if (kFilters.groups.size === 0) return true;
  if (!contact.groups?.length) return kFilters.groups.has(kNoGroup);
  return contact.groups.some((group) => kFilters.groups.has(group));
}
// How many contacts each of them has.
function CountFilters() {
  const counts = { groups: new Map(), favourite: 0, marks: 0, none: 0 };
  for (const contact of kContacts) {
    for (const group of contact.groups ?? []) {
      counts.groups.set(group, (counts.groups.get(group) ?? 0) + 1);
    }
    if (!contact.groups?.length) ++counts.none;
    if (contact.favourite) ++counts.favourite;
    if (contact.marks?.length) ++counts.marks;
  }
  return counts;
}
function Toggle(name, count, press, settings = {}) {
  const button = Button(
    { class: 'toggle', 'aria-pressed': 'false', ...settings },
    () => {
      button.setAttribute('aria-pressed', String(press()));
      Find();
    },
    name,
    ' ',
    Make('span', { class: 'number', text: NumberText(count) }),
  );
  return button;
}
function GroupToggles({ groups, none }) {
  const Choose = (group) => () => !kFilters.groups.delete(group) && !!kFilters.groups.add(group);
  const { compare } = new Intl.Collator(kAlbum.lang, { numeric: true });
  const toggles = [...groups]
    .sort(([one], [other]) => compare(one, other))
    .map(([group, count]) =>
      Toggle(Isolated(group), count, Choose(group), { title: InOneLine(group) }),
    );
  if (none > 0) toggles.push(Toggle(Label('no-group'), none, Choose(kNoGroup)));
  return toggles;
}
// Many groups are behind a button, and made when it is pressed.
function ManyGroups(counts) {
  const place = Make('div', { class: 'many' });
  const text = `${FieldTitle('groups')} (${NumberText(counts.groups.size)})`;
  const details = Make('details', {}, Make('summary', { class: 'toggle', text }), place);
  details.addEventListener('toggle', () => Fill(place, GroupToggles(counts)), { once: true });
  return details;
}
function OfferFilters() {
  const counts = CountFilters();
  const Switch = (name) => () => (kFilters[name] = !kFilters[name]);
  const section = document.getElementById('filters');
  for (const [name, label] of [
    ['favourite', 'favourites'],
    ['marks', 'with-marks'],
  ]) {
    if (counts[name] > 0) section.append(Toggle(Label(label), counts[name], Switch(name)));
  }
  if (counts.groups.size >= kGroupsInARow) section.append(ManyGroups(counts));
  else if (counts.groups.size > 0) Fill(section, GroupToggles(counts));
  section.hidden = section.childElementCount === 0;
}

// The next birthdays from today on. In years without 29 February its day is the one before.
function OfferBirthdays() {
  const now = new Date();
  const today = Date.UTC(now.getFullYear(), now.getMonth(), now.getDate());
  const ahead = [];
  kContacts.forEach((contact, record) => {
    const born = contact.birthday === undefined ? null : ReadDay(contact.birthday);
    if (born === null) return;
    const InYear = (year) => {
      const isShort =
        born.month === 2 && born.day === 29 && new Date(Date.UTC(year, 1, 29)).getUTCMonth() !== 1;
      return Date.UTC(year, born.month - 1, isShort ? 28 : born.day);
    };
    let year = now.getFullYear();
    if (InYear(year) < today) ++year;
    ahead.push({ record, day: InYear(year), age: born.year === null ? 0 : year - born.year });
  });
  ahead.sort((one, other) => one.day - other.day || one.record - other.record);
  const section = document.getElementById('birthdays');
  section.hidden = ahead.length === 0;
  Fill(
    section.querySelector('ul'),
    ahead.slice(0, kBirthdaysAhead).map(({ record, day, age }) => {
      const when = day === today ? Label('today') : kWithoutYear.format(day);
      return Make(
        'li',
        {},
        Button(
          {},
          () => OpenContact(record),
          Face(record),
          Make(
            'span',
            {},
            Make('strong', {}, Isolated(NameOf(kContacts[record]))),
            Make('span', {
              text: age > 0 ? Label('turns', { day: when, n: NumberText(age) }) : when,
            }),
          ),
        ),
      );
    }),
  );
}

// What the words and filters ask for: days also as the record has them.
const kSearch = new Search(kContacts, (contact) => ({
  words: [
    NameOf(contact),
    contact.name,
    contact.sort,
    contact.phonetic ?? '',
    ...(contact.groups ?? []),
    ...contact.fields.flatMap(([field, text, types = []]) =>
      kDayFields.has(field) ? [text, DayText(text)] : [text, TypeText(types)],
    ),
  ],
  numbers: TextsOf(contact, 'number'),
}));
const kSearchField = document.getElementById('search');
const kOrder = Sorted();
const kCards = new Cells(document.getElementById('list'), {
  make: MakeCard,
  height: 10.5,
  width: 19,
});
let shownCards = [];
function Find() {
  kSearch.Find(kSearchField.value, kOrder, PassesFilters, (found, isFirst, isDone) => {
    shownCards = found;
    kCards.Show(found, isFirst ? 0 : kCards.current);
    if (!isDone) return;
    document.getElementById('nothing').hidden = found.length > 0;
    TellCount(found.length, kContacts.length);
  });
}

function PaperCard(record) {
  const contact = kContacts[record];
  const groups = contact.groups?.length
    ? [[FieldTitle('groups'), [{ text: contact.groups.map(InOneLine).join(', ') }]]]
    : [];
  return Make(
    'article',
    {},
    Make('h2', {}, Isolated(NameOf(contact))),
    contact.phonetic ? Make('p', {}, Isolated(contact.phonetic)) : null,
    PaperFacts([...FactsOf(contact), ...groups]),
  );
}

FillTemplate();
OfferFiles();
OfferFilters();
OfferBirthdays();
Find();
kSearchField.addEventListener('input', () => {
  scrollTo(0, Math.min(scrollY, kCards.list.offsetTop));
  Find();
});
kSearchField.addEventListener('keydown', (event) => {
  if (event.key !== 'ArrowDown' && event.key !== 'Enter') return;
  event.preventDefault();
  kCards.Focus(0);
});
PrintInstead(() => shownCards.map(PaperCard));
