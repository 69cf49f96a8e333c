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

const TitleOf = (item) => InOneLine(item.title) || Label('untitled');
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

// A time of an item as a button: the time on its first day, the title, and what else fits.
function ItemButton(occurrence, day, settings = {}) {
  const { item, begin } = occurrence;
  const isWhole = begin === null || occurrence.first < day;
  const button = Button(
    { class: `item${begin === null ? ' whole' : ''}`, ...settings },
    () => OpenItem(item, occurrence.number),
    isWhole ? null : Make('span', { class: 'time', text: TimeText(begin) }),
    isWhole ? null : ' ',
    Box(item),
    MarksOf(item),
    Isolated(TitleOf(item)),
  );
  return Paint(button, item);
}
function SpanText({ begin, end, first, last }) {
  if (begin === null) {
    return first === last ? Label('all-day') : `${ShortDayText(first)} – ${ShortDayText(last)}`;
  }
  if (end === begin) return TimeText(begin);
  return first === last
    ? `${TimeText(begin)} – ${TimeText(end)}`
    : `${TimeText(begin)} – ${ShortDayText(Math.floor(end / kDay))} ${TimeText(end)}`;
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
  return Label(number > 0 ? 'month-day' : 'month-day-back', { n: NumberText(Math.abs(number)) });
}
function RuleText({
  unit,
  every,
  days = [],
  monthDays = [],
  months = [],
  yearDays = [],
  count,
  until,
}) {
  let rule = every > 1 ? Label(`rule-${unit}s`, { n: NumberText(every) }) : Label(`rule-${unit}`);
  const words = [
    ...months.map((month) => MonthName(DayOfMonth(2000, month - 1))),
    ...monthDays.map(MonthDayWords),
    ...yearDays.map((n) => Label('year-day', { n: NumberText(n) })),
    ...days.map(WeekdayWords),
  ];
  if (words.length > 0) rule = Label('rule-on', { rule, days: ListText(words) });
  if (count !== undefined) rule = Label('rule-count', { rule, n: NumberText(count) });
  if (until !== undefined) {
    rule = Label('rule-until', { rule, day: ShortDayText(Math.floor(ViewersClock(until) / kDay)) });
  }
  return rule;
}

// An item in full, with the times of one of its days.
function OpenItem(item, number = 0) {
  const marks = MarkSection(item);
  kDialog.Open(
    Make('span', {}, Box(item), Isolated(TitleOf(item))),
    Make('p', {
      class: 'work',
      text: [KindText(item), StatusText(item)].filter((word) => word !== '').join(' · '),
    }),
    Facts([...TimesOf(item, number), ...FactsOf(item)]),
    marks,
    SourceLine(item),
  );
}
function TimesOf(item, number) {
  const rows = [];
  const Row = (field, text) => rows.push([FieldTitle(field), Make('span', { text })]);
  const length = item.length ?? 0;
  const time = TimeOfNumber(item.times, number) ?? TimeOfNumber(item.times, 0);
  const wall = TimeOfNumber(item.wall, number) ?? TimeOfNumber(item.wall, 0);
  if (time !== null && item.allDay) {
    Row('start', LongDayText(time));
    if (length > 0) Row('end', LongDayText(time + length));
  } else if (time !== null) {
    Row('start', LongTimeText(ViewersClock(time)));
    if (length > 0) Row('end', LongTimeText(ViewersClock(time + length)));
    if (wall !== null) rows.push([Label('clock-written'), WrittenText(wall, length)]);
  }
  if (item.due !== undefined) {
    if (item.allDay) Row('due', LongDayText(Math.floor((item.dueWall ?? item.due) / kDay)));
    else Row('due', LongTimeText(ViewersClock(item.due)));
    if (!item.allDay && item.dueWall !== undefined && time === null) {
      rows.push([Label('clock-written'), WrittenText(item.dueWall, 0)]);
    }
  }
  const zone = item.zone ?? '';
  if (zone !== '') rows.push([Label('zone'), Isolated(zone)]);
  if (item.rule !== undefined) {
    Row('repeats', RuleText(item.rule) + (item.isCut ? ` — ${Label('cut')}` : ''));
  }
  return rows;
}
function WrittenText(wall, length) {
  return Make('span', {
    text:
      length > 0 ? `${LongTimeText(wall)} – ${LongTimeText(wall + length)}` : LongTimeText(wall),
  });
}
function FactsOf(item) {
  const rows = [];
  const Moment = (name) => {
    if (item[name] !== undefined) {
      rows.push([FieldTitle(name), Make('span', { text: LongTimeText(ViewersClock(item[name])) })]);
    }
  };
  Moment('alarm');
  Moment('completed');
  if (item.priority !== undefined) {
    rows.push([FieldTitle('priority'), Make('span', { text: NumberText(item.priority) })]);
  }
  for (const [name, text] of item.fields) {
    rows.push([
      FieldTitle(name),
      name === 'class' ? Make('span', { text: Label(`class-${text}`) }) : Paragraph(text),
    ]);
  }
  if (item.color) {
    rows.push([
      FieldTitle('colour'),
      Paint(Make('span', { class: 'colour' }, Isolated(item.color)), item),
    ]);
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
          ...list.map((occurrence) =>
            Make(
              'li',
              {},
              Make('span', { class: 'time', text: SpanText(occurrence) }),
              ItemButton({ ...occurrence, begin: null }, day),
            ),
          ),
        ),
  );
}
