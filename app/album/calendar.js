// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The album of a calendar.

const kDaysInAStretch = 31;
const kPlace = document.getElementById('list');
const kRows = new Cells(Make('ul', { class: 'rows', 'aria-labelledby': 'period' }), {
  make: MakeRow,
  height: 3.25,
  gap: 0,
});
const kCards = new Cells(Make('ul', { 'aria-labelledby': 'period' }), {
  make: MakeMemo,
  height: 9,
  width: 19,
});
function ShowCells(cells, keys, more = null) {
  kPlace.replaceChildren(cells.list);
  cells.more = more;
  cells.Show(keys);
}

// From a day on, a stretch of days at a time; a longer one where nothing is.
const [kFirstDay, kLastDay] = kDated
  .map(SpanOf)
  .reduce(
    ([first, last], span) => [Math.min(first, span[0]), Math.max(last, span[1])],
    [Infinity, -Infinity],
  );
function* Stretches(day, last) {
  let length = kDaysInAStretch;
  for (let begin = day; begin <= last; begin += length) {
    const end = Math.min(last, begin + length - 1);
    const rows = Occurrences(kDated, begin, end)
      .filter(({ first }) => first >= begin || begin === day)
      .map((occurrence) => ({
        under: RowDayText(Math.max(day, occurrence.first)),
        item: occurrence.item,
        number: occurrence.number,
        Time: () => SpanText(occurrence),
        About: () => FieldText(occurrence.item, 'location'),
      }));
    if (rows.length > 0) yield RowsUnder(rows);
    else ((begin += length), (length *= 2), (begin -= length));
  }
}
const kListView = {
  Step: (day, steps) => MonthsLater(day, steps),
  Title: (day) => `${LongDayText(day)} –`,
  Show(place, day) {
    const stretches = Stretches(day, kLastDay);
    ShowCells(kRows, [], () => stretches.next().value ?? []);
    return kDated.filter((item) => SpanOf(item)[1] >= day).length;
  },
  Paper: () =>
    [...Stretches(kState.day, Math.min(kLastDay, MonthsLater(kState.day, 12) - 1))]
      .flat()
      .map(PaperRow),
};

// To-dos: what is late first, what is done behind.
function TodoRows() {
  const now = Date.now() / 1000;
  const IsLate = (item) => (item.allDay ? DueDay(item) < Today() : item.due < now);
  const PartOf = (item) => {
    if (IsDone(item)) return 3;
    if (RunsOf(item).length === 0) return 2;
    return item.due !== undefined && IsLate(item) ? 0 : 1;
  };
  const titles = ['overdue', 'open', 'undated', 'done'].map((key) => Label(key));
  const rows = kTodos.map((item) => ({
    item,
    number: 0,
    part: PartOf(item),
    under: titles[PartOf(item)],
    Time: () => DayText(item),
    About: () =>
      [
        StatusText(item),
        item.priority === undefined ? '' : `${FieldTitle('priority')} ${NumberText(item.priority)}`,
      ]
        .filter((word) => word !== '')
        .join(' · '),
  }));
  const When = ({ item }) =>
    item.due ??
    (item.times ? item.times[0][0] * (item.allDay ? kDay : 1) : (item.completed ?? Infinity));
  rows.sort(
    (one, other) =>
      one.part - other.part ||
      (When(one) === When(other) ? 0 : (When(one) - When(other)) * (one.part === 3 ? -1 : 1)) ||
      (one.item.priority ?? 99) - (other.item.priority ?? 99) ||
      one.item.index - other.item.index,
  );
  return RowsUnder(rows);
}
const DueDay = (item) => Math.floor((item.dueWall ?? item.due) / kDay);
// The first day that it is on, with the time unless that is all day long.
function DayText(item) {
  const runs = RunsOf(item);
  if (runs.length === 0) return '';
  const { first, begin } = OccurrenceAt(item, runs[0][0], 0);
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

// Memos, and events without a day.
function MakeMemo(item) {
  const text = FieldText(item, 'description');
  return Paint(
    Make(
      'li',
      { class: 'card memo' },
      Make(
        'h3',
        {},
        Button({ class: 'open' }, () => OpenItem(item), Isolated(TitleOf(item))),
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
  words: [item.title, ...item.fields.map(([, text]) => text), KindText(item), StatusText(item)],
  numbers: [],
}));
const kSearchOrder = kItems
  .map((item, index) => index)
  .sort((left, right) => {
    const kinds = Object.keys(kKindFields);
    const [one, other] = [kItems[left], kItems[right]];
    return (
      kinds.indexOf(one.kind) - kinds.indexOf(other.kind) ||
      (SpanOf(one)?.[0] ?? 1e9) - (SpanOf(other)?.[0] ?? 1e9) ||
      left - right
    );
  });
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
  About: () => (item.rule === undefined ? FieldText(item, 'location') : RuleText(item.rule)),
});

// What is shown, and for which day: today's, or the nearest one with something on it.
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
  day: kDated.length === 0 ? Today() : Math.max(kFirstDay, Math.min(kLastDay, Today())),
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

function OfferControls() {
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
  const month = document.getElementById('month');
  const year = document.getElementById('year');
  for (let i = 0; i < 12; ++i) {
    month.append(Make('option', { value: i, text: MonthName(DayOfMonth(2000, i)) }));
  }
  const Choose = () => {
    if (!/^\d{1,4}$/.test(year.value) || Number(year.value) === 0) return;
    const first = DayOfMonth(Number(year.value), Number(month.value));
    GoTo(first + Math.min(DateOf(kState.day).getUTCDate(), MonthsLater(first, 1) - first) - 1);
  };
  month.addEventListener('change', Choose);
  year.addEventListener('change', Choose);
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
  if (kAlbum.from !== undefined && kAlbum.to !== undefined) {
    const Day = (text) => ShortDayText(Math.floor(Date.parse(`${text}T00:00:00Z`) / kDay / 1000));
    document.getElementById('range').textContent = Label('range', {
      from: Day(kAlbum.from),
      to: Day(kAlbum.to),
    });
  }
}

FillTemplate();
OfferFiles();
OfferControls();
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
