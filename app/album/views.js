// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// The views of a calendar. Each is shown for a day, and gives the items that it shows.

const kRowsInADay = 3;
const kHoursInView = 7;

function ByDay(first, last) {
  const days = Array.from({ length: last - first + 1 }, () => []);
  for (const occurrence of Occurrences(kDated, first, last)) {
    const end = Math.min(last, occurrence.last);
    for (let day = Math.max(first, occurrence.first); day <= end; ++day) {
      days[day - first].push(occurrence);
    }
  }
  return days;
}
const ItemsOf = (days) => new Set(days.flat().map(({ item }) => item)).size;
// Its name for readers of screens holds what it shows.
function DayButton(day, count, text) {
  const name = Label('day-items', { day: LongDayText(day), n: NumberText(count) });
  const settings = day === Today() ? { 'aria-current': 'date' } : {};
  if (name.includes(text)) settings['aria-label'] = name;
  return Button(
    { class: 'day', ...settings },
    () => OpenDay(day),
    text,
    name.includes(text) ? null : Hidden(` – ${name}`),
  );
}

// A month as a table. Of its controls those of the shown day are stops of the tab key, the arrow
// keys go from day to day.
const kMonthView = {
  Step: (day, steps) => MonthsLater(day, steps),
  Title: MonthText,
  Show(place, day) {
    const { year, month } = MonthOf(day);
    this.first = WeekOf(DayOfMonth(year, month));
    this.last = WeekOf(DayOfMonth(year, month + 1) - 1) + 6;
    const days = ByDay(this.first, this.last);
    const head = Make('tr', {});
    for (let i = this.first; i < this.first + 7; ++i) {
      head.append(
        Make(
          'th',
          { scope: 'col' },
          Make('span', { 'aria-hidden': 'true', text: ShortWeekdayText(i) }),
          Hidden(WeekdayText(i)),
        ),
      );
    }
    const body = Make('tbody', {});
    for (let week = this.first; week < this.last; week += 7) {
      body.append(
        Make(
          'tr',
          {},
          [0, 1, 2, 3, 4, 5, 6].map((i) =>
            this.Cell(week + i, days[week + i - this.first], MonthOf(week + i).month === month),
          ),
        ),
      );
    }
    this.table = Make(
      'table',
      { class: 'month', role: 'grid', 'aria-labelledby': 'period' },
      Make('thead', {}, head),
      body,
    );
    this.table.addEventListener('keydown', (event) => this.TakeKey(event));
    place.replaceChildren(this.table);
    this.SetCurrent(day);
    return ItemsOf(days);
  },
  Cell(day, list, isOfMonth) {
    const rows = list.slice(0, 50).map((occurrence, i) => {
      const before = occurrence.first < day ? ' from-before' : '';
      const behind = occurrence.last > day ? ' goes-on' : '';
      return Make(
        'li',
        { class: `${i < kRowsInADay ? '' : 'over'}${before}${behind}` },
        ItemButton(occurrence, day),
      );
    });
    const more = list.length - kRowsInADay;
    return Make(
      'td',
      { role: 'gridcell', class: isOfMonth ? '' : 'other', 'data-day': day },
      DayButton(day, list.length, NumberText(DateOf(day).getUTCDate())),
      list.length === 0
        ? null
        : Make('span', {
            class: 'dots',
            'aria-hidden': 'true',
            text: '•'.repeat(Math.min(3, list.length)),
          }),
      rows.length === 0 ? null : Make('ul', { role: 'list' }, rows),
      more <= 0
        ? null
        : Button({ class: 'more' }, () => OpenDay(day), Label('more', { n: NumberText(more) })),
    );
  },
  SetCurrent(day) {
    for (const cell of this.table.querySelectorAll('td')) {
      SetStops(cell, Number(cell.dataset.day) === day);
    }
  },
  Focus(day) {
    this.SetCurrent(day);
    this.table.querySelector(`td[data-day="${day}"] .day`).focus();
  },
  TakeKey(event) {
    const cell = event.target.closest('td');
    if (cell === null || event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return;
    const day = Number(cell.dataset.day);
    const wanted = {
      ArrowLeft: day - 1,
      ArrowRight: day + 1,
      ArrowUp: day - 7,
      ArrowDown: day + 7,
      Home: WeekOf(day),
      End: WeekOf(day) + 6,
      PageUp: MonthsLater(day, -1),
      PageDown: MonthsLater(day, 1),
    }[event.key];
    if (wanted === undefined) return;
    event.preventDefault();
    GoTo(wanted);
    this.Focus(kState.day); // there is no other at the ends of the calendar
  },
};

// A week with its hours.
const kWeekView = {
  Step: (day, steps) => day + 7 * steps,
  Title: (day) => `${ShortDayText(WeekOf(day))} – ${ShortDayText(WeekOf(day) + 6)}`,
  Show(place, day) {
    const first = WeekOf(day);
    const days = ByDay(first, first + 6);
    const hours = Make('div', { class: 'scale', 'aria-hidden': 'true' });
    for (let hour = 0; hour < 24; ++hour) {
      hours.append(Make('span', { text: HourText(hour * 3600) }));
    }
    const week = Make(
      'div',
      { class: 'week' },
      Make('div', { class: 'corner' }),
      hours,
      days.map((list, i) => this.Day(first + i, list)),
    );
    const frame = Make(
      'div',
      { class: 'week-frame', role: 'region', tabindex: '0', 'aria-labelledby': 'period' },
      week,
    );
    place.replaceChildren(frame);
    // What lasts all day stays above the hours.
    frame.style.scrollPaddingTop = `${week.firstChild.offsetHeight}px`;
    frame.scrollTop = hours.firstChild.offsetHeight * kHoursInView;
    return ItemsOf(days);
  },
  Day(day, list) {
    const IsWhole = ({ begin, end }) =>
      begin === null || (begin <= day * kDay && end >= (day + 1) * kDay);
    const whole = list
      .filter(IsWhole)
      .map((occurrence) => Make('li', {}, ItemButton(occurrence, day)));
    const timed = Lanes(list.filter((occurrence) => !IsWhole(occurrence))).map(
      ({ occurrence, lane, lanes }) => {
        const top = Math.max(0, occurrence.begin - day * kDay);
        const bottom = Math.min(kDay, occurrence.end - day * kDay);
        const row = Make('li', {}, ItemButton(occurrence, day, true));
        row.style.top = `${(top / kDay) * 100}%`;
        row.style.height = `${(Math.max(bottom - top, 1800) / kDay) * 100}%`;
        row.style.left = `${(lane / lanes) * 100}%`;
        row.style.width = `${100 / lanes}%`;
        return row;
      },
    );
    const List = (name, rows) => Make('ul', { class: name, role: 'list' }, rows);
    return Make(
      'section',
      { 'aria-label': LongDayText(day) },
      Make(
        'div',
        { class: 'over-hours' },
        Make(
          'h3',
          {},
          DayButton(day, list.length, `${ShortWeekdayText(day)} ${DateOf(day).getUTCDate()}`),
        ),
        List('wholes', whole),
      ),
      List('hours', timed),
    );
  },
};
// Items that overlap stand beside each other.
function Lanes(list) {
  const placed = [];
  let ends = [];
  let cluster = [];
  const Close = () => {
    for (const row of cluster) row.lanes = ends.length;
    [ends, cluster] = [[], []];
  };
  for (const occurrence of list) {
    const { begin } = occurrence;
    if (ends.every((end) => end <= begin)) Close();
    const free = ends.findIndex((end) => end <= begin);
    const lane = free < 0 ? ends.length : free;
    ends[lane] = Math.max(occurrence.end, begin + 1800);
    const row = { occurrence, lane, lanes: 1 };
    cluster.push(row);
    placed.push(row);
  }
  Close();
  return placed;
}

// Rows with what they stand under at their left: told once, on the first of them.
function RowsUnder(rows) {
  let before = null;
  for (const row of rows) {
    row.isFirst = row.under !== before;
    before = row.under;
  }
  return rows;
}
function MakeRow({ under, isFirst, item, number, Time, About }) {
  return Make(
    'li',
    { class: `row${isFirst ? ' first' : ''}` },
    isFirst
      ? Make('h3', { class: 'under', text: under })
      : Make('span', { class: 'under' }, Hidden(under)),
    Make('span', { class: 'time', title: Time(), text: Time() }),
    Paint(
      Button(
        { class: 'open', title: TitleOf(item) },
        () => OpenItem(item, number),
        Box(item),
        MarksOf(item),
        Isolated(TitleOf(item)),
      ),
      item,
    ),
    Make('span', { class: 'about' }, Isolated(About())),
  );
}
function PaperRow({ under, isFirst, item, number, Time }) {
  const time = Time();
  return Make(
    'article',
    {},
    isFirst ? Make('h2', { text: under }) : null,
    Make('h3', {}, Box(item), Isolated(TitleOf(item)), time === '' ? null : ` (${time})`),
    PaperFacts([...TimesOf(item, number), ...FactsOf(item)]),
  );
}
