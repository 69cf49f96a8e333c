// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The album of contacts.

const kBirthdaysAhead = 8;
const kGroupsInARow = 12;

// An order by the language's rules takes the square of many accents behind each other.
const kLongestKey = 300;
function OrderOf(settings = {}) {
  const { compare } = new Intl.Collator(kAlbum.lang, settings);
  return (one, other) => compare(one.slice(0, kLongestKey), other.slice(0, kLongestKey));
}

// All contacts in the language's order, those without a name behind the others.
function Sorted() {
  const compare = OrderOf();
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
  const compare = OrderOf({ numeric: true });
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
function BirthdaysFrom(today, thisYear) {
  const ahead = [];
  kContacts.forEach((contact, record) => {
    const born = contact.birthday === undefined ? null : ReadDay(contact.birthday);
    if (born === null) return;
    const InYear = (year) => {
      const isShort =
        born.month === 2 && born.day === 29 && new Date(Date.UTC(year, 1, 29)).getUTCMonth() !== 1;
      return Date.UTC(year, born.month - 1, isShort ? 28 : born.day);
    };
    const year = InYear(thisYear) < today ? thisYear + 1 : thisYear;
    ahead.push({ record, day: InYear(year), age: born.year === null ? 0 : year - born.year });
  });
  return ahead.sort((one, other) => one.day - other.day || one.record - other.record);
}
function OfferBirthdays() {
  const now = new Date();
  const today = Date.UTC(now.getFullYear(), now.getMonth(), now.getDate());
  const ahead = BirthdaysFrom(today, now.getFullYear());
  const Row = ({ record, day, age }) => {
    const when = day === today ? Label('today') : kWithoutYear.format(day);
    const text = age > 0 ? Label('turns', { day: when, n: NumberText(age) }) : when;
    const name = Make('strong', {}, Isolated(NameOf(kContacts[record])));
    const about = Make('span', {}, name, Make('span', { text }));
    return Make(
      'li',
      {},
      Button({}, () => OpenContact(record), Face(record), about),
    );
  };
  const section = document.getElementById('birthdays');
  section.hidden = ahead.length === 0;
  Fill(section.querySelector('ul'), ahead.slice(0, kBirthdaysAhead).map(Row));
}

// What the words and filters ask for: days also as the record has them.
const kSearch = new Search(kContacts, (contact) => ({
  words: [
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
