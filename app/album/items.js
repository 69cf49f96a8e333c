// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Items of a calendar: in a row, and in full.

const kItems = ReadRecords();
kItems.forEach((item, index) => {
  item.index = index;
});
const kKindFields = { event: 'event', todo: 'to-do', memo: 'memo' };
const kKeptWithoutDays = kItems.filter(
  (item) => item.kind === 'memo' || (item.kind === 'event' && !item.times?.length),
);
const kTodos = kItems.filter((item) => item.kind === 'todo');
const kDated = kItems.filter((item) => item.kind !== 'memo' && RunsOf(item).length > 0);

const TitleOf = (item) => (IsSeen(item.title) ? InOneLine(item.title) : Label('untitled'));
const KindText = (item) => FieldTitle(kKindFields[item.kind]);
const IsDone = (item) => item.completed !== undefined || item.status === 'completed';
const StatusText = (item) => (item.status === undefined ? '' : Label(`status-${item.status}`));
const FieldText = (item, name) => item.fields.find((row) => row[0] === name)?.[1] ?? '';

// The record's colour, where it is one.
function Paint(element, item) {
  const colour = /^(?:0x|#)?([0-9a-f]{6})$/i.exec(item.color ?? '');
  if (colour !== null) element.style.setProperty('--own', `#${colour[1]}`);
  return element;
}
const Box = (item) =>
  item.kind !== 'todo'
    ? null
    : Make(
        'span',
        { class: 'box' },
        Make('span', { 'aria-hidden': 'true', text: IsDone(item) ? '☑' : '☐' }),
        Hidden(IsDone(item) ? Label('done') : KindText(item)),
      );
const MarksOf = (item) => (item.marks?.length ? MarkBadge(item) : null);

// A time of an item as a button: the time on its first day, the title, and what else fits. Among
// hours, which tell the time already, the title comes first.
function ItemButton(occurrence, day, isAmongHours = false) {
  const { item, begin } = occurrence;
  const isWhole = begin === null || occurrence.first < day;
  const time = isWhole ? [] : [Make('span', { class: 'time', text: TimeText(begin) })];
  const title = Isolated(TitleOf(item));
  const button = Button(
    {
      class: `item${begin === null ? ' whole' : ''}`,
      title: `${TitleOf(item)} (${SpanText(occurrence, day)})`,
    },
    () => OpenItem(item, occurrence.number),
    isAmongHours
      ? [Box(item), title, MarksOf(item), ' ', time]
      : [time, ' ', Box(item), MarksOf(item), title],
  );
  return Paint(button, item);
}
// When it is, in a row of a day: what is on other days is told with its date.
function SpanText({ begin, end, first, last }, day = first) {
  if (begin === null) {
    return first === last ? Label('all-day') : `${ShortDayText(first)} – ${ShortDayText(last)}`;
  }
  const text = MomentText(begin, first, day);
  return end === begin ? text : `${text} – ${MomentText(end, last, day)}`;
}

// How an item repeats, in words of the language. 1970-01-04 was a Sunday.
const kWeekdays = ['SU', 'MO', 'TU', 'WE', 'TH', 'FR', 'SA'];
function WeekdayWords(text) {
  const parts = /^(-?\d+)?([A-Z]{2})$/.exec(text);
  const weekday = kWeekdays.indexOf(parts?.[2]);
  if (weekday < 0) return Visible(text);
  const day = WeekdayText(3 + weekday);
  const position = Number(parts[1] ?? 0);
  if (position === 0) return day;
  if (position === -1) return Label('position-last', { day });
  return position > 0 && position <= 5
    ? Label(`position-${position}`, { day })
    : Label('position-back', { day, n: NumberText(-position) });
}
function MonthDayWords(number) {
  if (number === -1) return Label('month-day-last');
  if (number === 1) return Label('month-day-1');
  return Label(number > 0 ? 'month-day' : 'month-day-back', { n: NumberText(Math.abs(number)) });
}
function RuleText(item) {
  const { unit, every, days = [], monthDays = [], months = [], yearDays = [], count } = item.rule;
  let rule = every > 1 ? Label(`rule-${unit}s`, { n: NumberText(every) }) : Label(`rule-${unit}`);
  const words = [
    ...months.map((month) => MonthName(DayOfMonth(2000, month - 1))),
    ...monthDays.map(MonthDayWords),
    ...yearDays.map((n) => Label(n === 1 ? 'year-day-1' : 'year-day', { n: NumberText(n) })),
    ...days.map(WeekdayWords),
  ];
  if (words.length > 0) rule = Label('rule-on', { rule, days: ListText(words) });
  if (count !== undefined) rule = Label('rule-count', { rule, n: NumberText(count) });
  if (item.rule.until === undefined) return rule;
  return Label('rule-until', { rule, day: ShortDayText(LastDayOf(item)) });
}
// The day of the last time, by the viewer's clock. A rule's own end is on a clock that isn't known,
// and told as it stands where the times aren't followed up to it.
function LastDayOf({ times, allDay, isCut, rule }) {
  if (isCut || !times?.length) return Math.floor(rule.until / kDay);
  const last = LastTime(times);
  return allDay ? last : Math.floor(ViewersClock(last) / kDay);
}

// An item in full, with the times of one of its days.
function OpenItem(item, number = 0) {
  kDialog.Open(
    Make('span', {}, Box(item), Isolated(TitleOf(item))),
    Make('p', {
      class: 'work',
      text: [KindText(item), StatusText(item)].filter((word) => word !== '').join(' · '),
    }),
    Facts([...TimesOf(item, number), ...FactsOf(item)]),
    MarkSection(item),
    SourceLine(item),
  );
}
// Rows of Facts.
function TimesOf(item, number) {
  const rows = [];
  const Row = (title, text) => rows.push([title, [{ text }]]);
  const time = TimeOfNumber(item.times, number) ?? TimeOfNumber(item.times, 0);
  const wall = TimeOfNumber(item.wall, number) ?? TimeOfNumber(item.wall, 0);
  const Text = item.allDay ? LongDayText : (moment) => LongTimeText(ViewersClock(moment));
  if (time !== null) {
    Row(FieldTitle('start'), Text(time));
    const end = item.end ?? (item.length > 0 ? time + item.length : undefined);
    if (end !== undefined) Row(FieldTitle('end'), Text(end));
    if (wall !== null && !item.allDay) {
      Row(Label('clock-written'), WrittenText(wall, item.endWall ?? wall + WrittenLength(item)));
    }
  }
  if (item.due !== undefined) {
    const runs = RunsOf(item, false);
    const due = TimeOfNumber(runs, number) ?? TimeOfNumber(runs, 0);
    Row(
      FieldTitle('due'),
      item.allDay ? LongDayText(due) : LongTimeText(ViewersClockOf(item, due)),
    );
    if (!item.allDay && item.dueWall !== undefined && time === null) {
      Row(Label('clock-written'), LongTimeText(item.dueWall));
    }
  }
  if (item.zone) Row(Label('zone'), item.zone);
  if (item.rule !== undefined) {
    Row(FieldTitle('repeats'), RuleText(item) + (item.isCut ? ` — ${Label('cut')}` : ''));
  }
  return rows;
}
const WrittenText = (begin, end) =>
  begin === end ? LongTimeText(begin) : `${LongTimeText(begin)} – ${LongTimeText(end)}`;
function FactsOf(item) {
  const rows = [];
  const Row = (field, text, Element) => rows.push([FieldTitle(field), [{ text, Element }]]);
  const Moment = (field) => {
    if (item[field] !== undefined) Row(field, LongTimeText(ViewersClock(item[field])));
  };
  Moment('alarm');
  Moment('completed');
  if (item.priority !== undefined) Row('priority', NumberText(item.priority));
  for (const [field, text] of item.fields) {
    Row(field, field === 'class' ? Label(`class-${text}`) : text);
  }
  if (item.color) {
    Row('colour', item.color, () =>
      Paint(Make('span', { class: 'colour' }, Isolated(item.color)), item),
    );
  }
  Moment('created');
  Moment('modified');
  return rows;
}

// A day in full.
function OpenDay(day) {
  const list = Occurrences(kDated, day, day);
  kDialog.Open(
    LongDayText(day),
    list.length === 0
      ? Make('p', { text: Label('nothing-on') })
      : Make(
          'ul',
          { class: 'agenda', role: 'list' },
          list.map((occurrence) =>
            Make(
              'li',
              {},
              Make('span', { class: 'time', text: SpanText(occurrence, day) }),
              ItemButton({ ...occurrence, begin: null }, day),
            ),
          ),
        ),
  );
}
