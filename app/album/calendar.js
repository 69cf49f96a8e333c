// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The album of a calendar.

const kDaysInAStretch = 7;
const kPlace = document.getElementById('list');
const kRows = new Cells(Make('ul', { class: 'rows', 'aria-labelledby': 'period' }), {
  make: MakeRow,
  height: 3.25,
  gap: 0,
});
const kCards = new Cells(Make('ul', { 'aria-labelledby': 'period' }), {
  make: MakeMemo,
  height: 10,
  width: 19,
});
function ShowCells(cells, keys, more = null) {
  kPlace.replaceChildren(cells.list);
  cells.more = more;
  cells.Show(keys);
}

// From a day on, a stretch of days at a time; those without anything are passed over.
function* Stretches(day, last) {
  let begin = day;
  while (begin <= last) {
    const end = Math.min(last, begin + kDaysInAStretch - 1);
    const rows = Occurrences(kDated, begin, end)
      .filter(({ first }) => first >= begin || begin === day)
      .map((occurrence) => ({
        under: RowDayText(Math.max(day, occurrence.first)),
        item: occurrence.item,
        number: occurrence.number,
        Time: () => SpanText(occurrence, Math.max(day, occurrence.first)),
        About: () => FieldText(occurrence.item, 'location'),
      }));
    if (rows.length > 0) yield RowsUnder(rows);
    begin = rows.length > 0 ? end + 1 : NextDay(kDated, end + 1);
  }
}
const kListView = {
  Step: (day, steps) => MonthsLater(day, steps),
  Title: (day) => `${LongDayText(day)} –`,
  Show(place, day) {
    const stretches = Stretches(day, SpanOfAll(kDated)[1]);
    ShowCells(kRows, [], () => stretches.next().value ?? []);
    return kDated.filter((item) => SpanOf(item)[1] >= day).length;
  },
  Paper() {
    const last = Math.min(SpanOfAll(kDated)[1], MonthsLater(kState.day, 12) - 1);
    return [...Stretches(kState.day, last)].flat().map(PaperRow);
  },
};

// To-dos: what is late first, what is done behind. One that repeats stands there once, as it is due
// next.
const kTodoParts = ['overdue', 'open', 'undated', 'passed-on', 'done'];
function TodoRow(item) {
  const now = item.allDay ? Today() : Date.now() / 1000;
  const { time, number } = NextTime(RunsOf(item, false), now);
  const isLate = item.due !== undefined && time < now && !item.isCut;
  const PartOf = () => {
    if (IsDone(item)) return 'done';
    if (['declined', 'delegated'].includes(item.status)) return 'passed-on';
    if (time === -Infinity) return 'undated';
    return isLate ? 'overdue' : 'open';
  };
  return {
    item,
    number,
    part: kTodoParts.indexOf(PartOf()),
    when: time === -Infinity ? (item.completed ?? Infinity) : time * (item.allDay ? kDay : 1),
    under: Label(PartOf()),
    Time: () => DayText(item, number),
    About: () => [StatusText(item), PriorityText(item)].filter((word) => word !== '').join(' · '),
  };
}
function TodoRows() {
  const done = kTodoParts.indexOf('done');
  const rows = kTodos.map(TodoRow);
  rows.sort(
    (one, other) =>
      one.part - other.part ||
      (one.when === other.when ? 0 : (one.when - other.when) * (one.part === done ? -1 : 1)) ||
      (one.item.priority ?? 99) - (other.item.priority ?? 99) ||
      one.item.index - other.item.index,
  );
  return RowsUnder(rows);
}
const PriorityText = ({ priority }) =>
  priority === undefined ? '' : `${FieldTitle('priority')} ${NumberText(priority)}`;
// The first day that it is on at one of its times, with the time unless that is all day long.
function DayText(item, number = 0) {
  const time = TimeOfNumber(RunsOf(item), number);
  if (time === null) return '';
  const { first, begin } = OccurrenceAt(item, time, number);
  return begin === null ? ShortDayText(first) : `${ShortDayText(first)}, ${TimeText(begin)}`;
}
const kTodoView = {
  Title: () => Label('todos'),
  Show() {
    ShowCells(kRows, TodoRows());
    return kTodos.length;
  },
  Paper: () => TodoRows().map(PaperRow),
};

// Memos, and events without a day. Of a text that begins with the title, the rest is shown.
function MakeMemo(item) {
  const whole = FieldText(item, 'description').trimStart();
  const text = whole.startsWith(item.title) ? whole.slice(item.title.length).trim() : whole;
  return Paint(
    Make(
      'li',
      { class: 'card memo' },
      Make(
        'h3',
        {},
        Button(
          { class: 'open', title: TitleOf(item) },
          () => OpenItem(item),
          Isolated(TitleOf(item)),
        ),
        MarksOf(item),
      ),
      item.kind === 'memo'
        ? null
        : Make('p', { class: 'work', text: `${KindText(item)} · ${Label('undated')}` }),
      Make('p', { class: 'text', dir: 'auto', text: Visible(text) }),
    ),
    item,
  );
}
const kMemoView = {
  Title: () => Label('memos'),
  Show() {
    ShowCells(kCards, kKeptWithoutDays);
    return kKeptWithoutDays.length;
  },
  Paper: () =>
    kKeptWithoutDays.map((item) => PaperRow({ isFirst: false, item, number: 0, Time: () => '' })),
};

// What a search finds: items of all kinds, each once.
const kSearch = new Search(kItems, (item) => ({
  words: [
    item.title,
    KindText(item),
    StatusText(item),
    PriorityText(item),
    ...[...TimesOf(item, 0), ...FactsOf(item)].flatMap(([, values]) =>
      values.map(({ text }) => text),
    ),
  ],
  numbers: [],
}));
const kSearchOrder = (() => {
  const kinds = Object.keys(kKindFields);
  return kItems
    .map((item) => ({ item, kind: kinds.indexOf(item.kind), day: SpanOf(item)?.[0] ?? Infinity }))
    .sort(
      (one, other) =>
        one.kind - other.kind ||
        (one.day === other.day ? one.item.index - other.item.index : one.day - other.day),
    )
    .map(({ item }) => item.index);
})();
let foundRows = [];
const kResultView = {
  Title: () => Label('results'),
  Show() {
    kSearch.Find(
      kSearchField.value,
      kSearchOrder,
      () => true,
      (found, isFirst, isDone) => {
        foundRows = RowsUnder(found.map((index) => ResultRow(kItems[index])));
        if (kState.Shown() !== this) return;
        ShowCells(kRows, foundRows);
        if (isDone) Tell(found.length);
      },
    );
    return null;
  },
  Paper: () => foundRows.map(PaperRow),
};
const ResultRow = (item) => ({
  under: KindText(item),
  item,
  number: 0,
  Time: () => DayText(item),
  About: () => (item.rule === undefined ? FieldText(item, 'location') : RuleText(item)),
});

// What is shown, and for which day: today's, unless all is ahead of it or behind it; then the nearest
// one with something on it.
const NearestToToday = ([first, last]) => Math.max(first, Math.min(last, Today()));
const kViews = {
  month: kMonthView,
  week: kWeekView,
  list: kListView,
  todos: kTodoView,
  memos: kMemoView,
};
const kSearchField = document.getElementById('search');
const kState = {
  view: 'month',
  day: kDated.length === 0 ? Today() : NearestToToday(SpanOfAll(kDated)),
  Shown: () => (kSearchField.value.trim() === '' ? kViews[kState.view] : kResultView),
};
function Tell(shown) {
  document.getElementById('nothing').hidden = shown > 0 || kState.Shown().Paper === undefined;
  TellCount(shown, kItems.length);
}
function Refresh() {
  const view = kState.Shown();
  const { year, month } = MonthOf(kState.day);
  document.getElementById('period').textContent = view.Title(kState.day);
  document.getElementById('month').value = month;
  document.getElementById('year').value = year;
  document.getElementById('steps').hidden = view.Step === undefined;
  for (const button of document.querySelectorAll('#views button')) {
    button.setAttribute('aria-pressed', String(kViews[button.dataset.view] === view));
  }
  const shown = view.Show(kPlace, kState.day);
  if (shown !== null) Tell(shown);
}
function GoTo(day) {
  kState.day = Math.max(DayOfMonth(1, 0), Math.min(DayOfMonth(9999, 11, 31), day));
  Refresh();
}

function OfferViews() {
  document.getElementById('views').append(
    ...Object.keys(kViews).map((name) =>
      Button({ class: 'toggle', 'data-view': name, text: Label(name) }, () => {
        kSearchField.value = '';
        kState.view = name;
        Refresh();
      }),
    ),
  );
  const Press = (id, press) => document.getElementById(id).addEventListener('click', press);
  Press('previous', () => GoTo(kState.Shown().Step(kState.day, -1)));
  Press('next', () => GoTo(kState.Shown().Step(kState.day, 1)));
  Press('today', () => GoTo(Today()));
}
function OfferMonths() {
  const month = document.getElementById('month');
  const year = document.getElementById('year');
  for (let i = 0; i < 12; ++i) {
    month.append(Make('option', { value: i, text: MonthName(DayOfMonth(2000, i)) }));
  }
  const Choose = () => {
    if (!/^\d{1,4}$/.test(year.value) || Number(year.value) === 0) {
      year.value = MonthOf(kState.day).year;
      return;
    }
    const first = DayOfMonth(Number(year.value), Number(month.value));
    GoTo(first + Math.min(DateOf(kState.day).getUTCDate(), MonthsLater(first, 1) - first) - 1);
  };
  month.addEventListener('change', Choose);
  year.addEventListener('change', Choose);
}
function OfferClocks() {
  const clock = document.querySelector('#clock select');
  const { timeZone } = new Intl.DateTimeFormat().resolvedOptions();
  clock.append(
    Make('option', { text: `${Label('clock-mine')} (${timeZone})` }),
    Make('option', {
      text: Label('clock-written') + (kAlbum.zone ? ` (${Visible(kAlbum.zone)})` : ''),
    }),
  );
  clock.addEventListener('change', () => {
    kClock.isWritten = clock.selectedIndex === 1;
    Refresh();
  });
}
function TellRange() {
  if (kAlbum.from === undefined || kAlbum.to === undefined) return;
  const Day = (text) => ShortDayText(Math.floor(Date.parse(`${text}T00:00:00Z`) / kDay / 1000));
  document.getElementById('range').textContent = Label('range', {
    from: Day(kAlbum.from),
    to: Day(kAlbum.to),
  });
}

FillTemplate();
OfferFiles();
OfferViews();
OfferMonths();
OfferClocks();
TellRange();
Refresh();
kSearchField.addEventListener('input', Refresh);
kSearchField.addEventListener('keydown', (event) => {
  if ((event.key !== 'ArrowDown' && event.key !== 'Enter') || kState.Shown() !== kResultView) {
    return;
  }
  event.preventDefault();
  kRows.Focus(0);
});
PrintInstead(() => kState.Shown().Paper?.() ?? null);
