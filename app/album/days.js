// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Days and clocks. A day is a number from 1970-01-01; a time on a clock is in seconds, as if that
// clock were UTC. So no zone of the browser gets into what is computed.

const kDay = 86400;
const kClock = { isWritten: false };

// The viewer's clock at a time.
const ViewersClock = (time) => time - new Date(time * 1000).getTimezoneOffset() * 60;
const Today = () => Math.floor(ViewersClock(Date.now() / 1000) / kDay);
const WeekdayOf = (day) => (((day + 4) % 7) + 7) % 7; // 0 is Sunday
const DateOf = (day) => new Date(day * kDay * 1000);
const MonthOf = (day) => ({ year: DateOf(day).getUTCFullYear(), month: DateOf(day).getUTCMonth() });
function DayOfMonth(year, month, date = 1) {
  const day = new Date(0);
  day.setUTCFullYear(year, month, date);
  return Math.floor(day.getTime() / 1000 / kDay);
}
// The same date of another month, or its last one.
function MonthsLater(day, months) {
  const { year, month } = MonthOf(day);
  const length = DayOfMonth(year, month + months + 1) - DayOfMonth(year, month + months);
  return DayOfMonth(year, month + months, Math.min(DateOf(day).getUTCDate(), length));
}
// 0 is Sunday.
const kWeekStart = (() => {
  const locale = new Intl.Locale(kLocale);
  const info = locale.getWeekInfo?.() ?? locale.weekInfo;
  return (info?.firstDay ?? (/^(en|ja|ko)/.test(kAlbum.lang) ? 7 : 1)) % 7;
})();
const WeekOf = (day) => day - ((WeekdayOf(day) - kWeekStart + 7) % 7);

// Formats of days, and of times on clocks. What no calendar has gives an empty text.
function Format(options) {
  const format = new Intl.DateTimeFormat(kLocale, { timeZone: 'UTC', ...options });
  return (seconds) => (Math.abs(seconds) <= 8.64e12 ? format.format(seconds * 1000) : '');
}
const OfDay = (format) => (day) => format(day * kDay);
const TimeText = Format({ hour: 'numeric', minute: '2-digit' });
const HourText = Format({ hour: 'numeric' });
const LongTimeText = Format({ dateStyle: 'full', timeStyle: 'short' });
const LongDayText = OfDay(Format({ dateStyle: 'full' }));
const ShortDayText = OfDay(Format({ dateStyle: 'medium' }));
const RowDayText = OfDay(
  Format({ weekday: 'short', day: 'numeric', month: 'short', year: 'numeric' }),
);
const MonthText = OfDay(Format({ month: 'long', year: 'numeric' }));
const MonthName = OfDay(Format({ month: 'long' }));
const WeekdayText = OfDay(Format({ weekday: 'long' }));
const ShortWeekdayText = OfDay(Format({ weekday: 'short' }));

// A time near a day: with its date where that is another one.
const kMoments = [{}, { day: 'numeric', month: 'short' }, { dateStyle: 'medium' }].map((options) =>
  Format(
    options.dateStyle
      ? { ...options, timeStyle: 'short' }
      : { ...options, hour: 'numeric', minute: '2-digit' },
  ),
);
function MomentText(seconds, own, day) {
  const isOfYear = MonthOf(own).year === MonthOf(day).year;
  return kMoments[own === day ? 0 : isOfYear ? 1 : 2](seconds);
}

// The runs that days are shown by: of a to-do, when it is due. One that repeats is due as long
// behind each of its times as it is behind the first, on the clock that is looked at.
function RunsOf(item, isWritten = kClock.isWritten) {
  const times = (isWritten && !item.allDay ? item.wall : item.times) ?? [];
  if (item.due === undefined) return times;
  if (item.dueAfter !== undefined && times.length > 0) {
    const after = DueAfter(item);
    return times.map(([start, step, count]) => [start + after, step, count]);
  }
  if (item.allDay) return [[Math.floor((item.dueWall ?? item.due) / kDay), 0, 1]];
  return [[isWritten ? (item.dueWall ?? item.due) : item.due, 0, 1]];
}
function DueAfter({ times, dueAfter = 0, allDay }) {
  if (!times?.length) return 0;
  return allDay ? Math.floor(dueAfter / kDay) : dueAfter;
}
// The viewer's clock at a time of the runs. What is due stays as far behind its start on that clock
// where it is changed between the two.
const ViewersClockOf = (item, time) => ViewersClock(time - DueAfter(item)) + DueAfter(item);

const WrittenLength = ({ length = 0, lengthWall = length }) => lengthWall;
function LengthOf(item) {
  if (item.due !== undefined) return 0;
  return kClock.isWritten ? WrittenLength(item) : (item.length ?? 0);
}

// The first and the last day that an item is on; null without any.
function SpanOf(item) {
  const runs = RunsOf(item);
  if (runs.length === 0) return null;
  const first = runs.reduce((least, [start]) => Math.min(least, start), Infinity);
  return [OccurrenceAt(item, first, 0).first, OccurrenceAt(item, LastTime(runs), 0).last];
}
// Of all of them.
function SpanOfAll(items) {
  return items
    .map(SpanOf)
    .reduce(
      ([first, last], span) => [Math.min(first, span[0]), Math.max(last, span[1])],
      [Infinity, -Infinity],
    );
}
const LastTime = (runs) =>
  runs.reduce((most, [start, step, count]) => Math.max(most, start + step * (count - 1)), -Infinity);

// One time of an item: its days, and its begin and end on the clock unless it is all day long.
// "number" counts its times from 0.
function OccurrenceAt(item, time, number) {
  const length = LengthOf(item);
  if (item.allDay) {
    return { item, number, first: time, last: time + length, begin: null, end: null };
  }
  const begin = kClock.isWritten ? time : ViewersClockOf(item, time);
  const end = kClock.isWritten || length === 0 ? begin + length : ViewersClock(time + length);
  const first = Math.floor(begin / kDay);
  const last = Math.max(first, Math.floor((end - 1) / kDay));
  return { item, number, first, last, begin, end: Math.max(begin, end) };
}

// What there is from a day to another one. Of repeats only the times near them are looked at.
function Occurrences(items, first, last) {
  const found = [];
  for (const item of items) {
    const unit = item.allDay ? 1 : kDay;
    const slack = item.allDay ? 0 : kDay; // zones are less than a day apart
    const earliest = first * unit - slack - LengthOf(item);
    const latest = (last + 1) * unit + slack;
    let number = 0;
    for (const [start, step, count] of RunsOf(item)) {
      const from = step > 0 ? Math.max(0, Math.ceil((earliest - start) / step)) : 0;
      const to = step > 0 ? Math.min(count - 1, Math.floor((latest - start) / step)) : count - 1;
      for (let i = from; i <= to; ++i) {
        const occurrence = OccurrenceAt(item, start + i * step, number + i);
        if (occurrence.first <= last && occurrence.last >= first) found.push(occurrence);
      }
      number += count;
    }
  }
  return found.sort(InOrder);
}
// By day; of a day first what lasts all of it, then by the clock.
function InOrder(one, other) {
  return (
    one.first - other.first ||
    (one.begin ?? -1) - (other.begin ?? -1) ||
    one.item.index - other.item.index
  );
}

// Of runs that go up, the first time from one on, else the last time; with its number.
function NextTime(runs, from) {
  let next = { time: Infinity, number: 0 };
  let last = { time: -Infinity, number: 0 };
  let number = 0;
  for (const [start, step, count] of runs) {
    const i = step > 0 ? Math.max(0, Math.ceil((from - start) / step)) : 0;
    const time = start + i * step;
    if (i < count && time >= from && time < next.time) next = { time, number: number + i };
    const end = start + (count - 1) * step;
    if (end > last.time) last = { time: end, number: number + count - 1 };
    number += count;
  }
  return next.time < Infinity ? next : last;
}
// A day from one on with nothing before it, by any clock; Infinity where nothing is behind it.
function NextDay(items, day) {
  return items.reduce((next, item) => {
    const [unit, slack] = item.allDay ? [1, 0] : [kDay, 1];
    const from = (day - slack) * unit;
    const { time } = NextTime(RunsOf(item), from);
    return time < from ? next : Math.min(next, Math.max(day, Math.floor(time / unit) - slack));
  }, Infinity);
}

// The time of a number in runs.
function TimeOfNumber(runs, number) {
  for (const [start, step, count] of runs ?? []) {
    if (number < count) return start + step * number;
    number -= count;
  }
  return null;
}
