// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// What both albums need: their data, words and elements. Records are data: their texts become text
// nodes, and attributes only by LinkOf, or as the title that a pointer is shown.
'use strict';

const kAlbum = JSON.parse(document.getElementById('album').textContent);
// The reader's own kind of the language, where there is one: its order of dates, its weeks.
const kLocale = navigator.languages.find(IsOfLanguage) ?? kAlbum.lang;
const kRemInPixels = parseFloat(getComputedStyle(document.documentElement).fontSize) || 16;

// Browsers have told names that are no locales, as "en-US@posix".
function IsOfLanguage(name) {
  try {
    return new Intl.Locale(name).language === kAlbum.lang;
  } catch {
    return false;
  }
}

function ReadRecords() {
  const records = [];
  for (const part of document.querySelectorAll('script.records')) {
    for (const record of JSON.parse(part.textContent)) records.push(record);
    part.remove();
  }
  return records;
}

// A label with {n} and the like filled in.
function Label(key, values = {}) {
  return (kAlbum.labels[key] ?? key).replace(/\{(\w+)\}/g, (hole, name) => values[name] ?? hole);
}
const FieldTitle = (name) => kAlbum.fields[name] ?? name;
const TypeWord = (word) => kAlbum.types[word] ?? word;
const NumberText = (() => {
  const format = new Intl.NumberFormat(kLocale);
  return (number) => format.format(number);
})();
const ListText = (() => {
  const format = new Intl.ListFormat(kLocale);
  return (words) => format.format(words);
})();

// Text as it may stand on the page: what controls a terminal or is no character is visible. Of more
// accents behind each other than any script has, which browsers take the square of their number for,
// there is an ellipsis.
function Visible(text) {
  if (!/[\0-\x08\x0b-\x1f\x7f-\x9f\ud800-\udfff]|\p{M}{31}/u.test(text)) return text;
  return text
    .replace(/\r\n?/g, '\n')
    .replace(/[\0-\x08\x0b-\x1f]/g, (byte) => String.fromCharCode(0x2400 + byte.charCodeAt(0)))
    .replace(/\x7f/g, '\u2421')
    .replace(/[\x80-\x9f]|[\ud800-\udfff]/gu, '\ufffd')
    .replace(/(\p{M}{30})\p{M}+/gu, '$1…');
}
// Line by line, as a pattern of blanks and line ends would take the square of a run of blanks.
const InOneLine = (text) =>
  Visible(text)
    .split('\n')
    .map((line) => line.trim())
    .filter((line) => line !== '')
    .join(', ');

// Whether there is anything to see in a text.
const IsSeen = (text) => /[^\s\p{Z}\p{Cf}\p{Default_Ignorable_Code_Point}\u2800]/u.test(text);

// An element with attributes ("text" is its text) and children, or lists of them; those that are
// null are left out. They are added one by one, as a call takes only so many arguments.
function Make(tag, settings = {}, ...children) {
  const element = document.createElement(tag);
  for (const [name, value] of Object.entries(settings)) {
    if (name === 'text') element.textContent = value;
    else element.setAttribute(name, value);
  }
  Fill(element, children);
  return element;
}
function Fill(element, children) {
  for (const child of children) {
    if (Array.isArray(child)) Fill(element, child);
    else if (child !== null && child !== undefined) element.append(child);
  }
}
// A text of a record, which no direction of its letters or control characters leaves.
const Isolated = (text) => Make('bdi', { text: InOneLine(text) });
const Hidden = (text) => Make('span', { class: 'unseen', text });
function Button(settings, press, ...children) {
  const button = Make('button', { type: 'button', ...settings }, ...children);
  button.addEventListener('click', press);
  return button;
}

// Words as a search compares them.
const kPlainPairs = 'ß=ss ø=o ł=l đ=d ð=d þ=th æ=ae œ=oe ı=i ħ=h ŧ=t ŋ=n ĸ=k ς=σ'.split(' ');
const kPlain = Object.fromEntries(kPlainPairs.map((pair) => pair.split('=')));
const kPlainLetters = new RegExp(`[${Object.keys(kPlain).join('')}]`, 'g');
// The voice of kana is no accent. Many accents behind each other, which a form of Unicode puts in
// order, take the square of their number for that, and go before it.
const WithoutAccents = (text) => text.replace(/(?![\u3099\u309a])\p{M}/gu, '');
function Folded(text) {
  if (/^[\0-\x7f]*$/.test(text)) return text.toLowerCase();
  return WithoutAccents(WithoutAccents(text.toLowerCase()).normalize('NFKD'))
    .toLowerCase() // of letters that were signs
    .replace(kPlainLetters, (letter) => kPlain[letter])
    .replace(/[\u30a1-\u30f6\u30fd\u30fe]/g, (kana) =>
      String.fromCharCode(kana.charCodeAt(0) - 0x60),
    );
}
const DigitsOf = (text) => WithoutAccents(text).normalize('NFKC').replace(/[^0-9]/g, '');

const WhenIdle = globalThis.requestIdleCallback ?? ((work) => setTimeout(work, 20));

// Finds records by words. Texts are folded in idle time, or when a search first looks at them.
class Search {
  constructor(records, textsOf) {
    this.records = records;
    this.textsOf = textsOf;
    this.folded = new Array(records.length);
    this.next = 0;
    WhenIdle(() => this.FoldSome());
  }
  FoldSome() {
    InSlice(8, () => this.next < this.records.length && (this.Text(this.next++), true));
    if (this.next < this.records.length) WhenIdle(() => this.FoldSome());
  }
  // One text: the words, and behind a NUL the digits of the numbers.
  Text(record) {
    let text = this.folded[record];
    if (text === undefined) {
      const { words, numbers } = this.textsOf(this.records[record]);
      text = `${Folded(words.join('\n'))}\0${numbers.map(DigitsOf).join(' ')}`;
      this.folded[record] = text;
    }
    return text;
  }
  // Whether a record has all words of a query, as a function.
  Test(query) {
    const words = Folded(query)
      .split(/\s+/)
      .filter((word) => word !== '');
    if (words.length === 0) return () => true;
    const digits = words.map((word) => (/^[-+()./\d]*$/.test(word) ? DigitsOf(word) : ''));
    return (record) => {
      const text = this.Text(record);
      return words.every(
        (word, i) =>
          text.includes(word) || (digits[i] !== '' && text.includes(digits[i], text.indexOf('\0'))),
      );
    };
  }
  // Goes through records in an order. tell(found, isFirst, isDone) is told what is found at once,
  // and again when all are looked through, unless something else is looked for meanwhile.
  Find(query, order, passes, tell) {
    const search = {};
    this.search = search;
    const test = this.Test(query);
    const found = [];
    let next = 0;
    const Work = () => {
      if (search !== this.search) return;
      const isFirst = next === 0;
      InSlice(isFirst ? 16 : 10, () => {
        if (next === order.length) return false;
        const record = order[next++];
        if (passes(this.records[record]) && test(record)) found.push(record);
        return true;
      });
      const isDone = next === order.length;
      if (isFirst || isDone) tell(found, isFirst, isDone);
      if (!isDone) requestAnimationFrame(() => setTimeout(Work)); // behind what is found so far
    };
    Work();
  }
}

// Works for some milliseconds, while there is something to do.
function InSlice(milliseconds, work) {
  const end = performance.now() + milliseconds;
  do {
    for (let i = 0; i < 32; ++i) if (!work()) return;
  } while (performance.now() < end);
}

// Fills in the labels of the template, and what both pages have at their top and bottom.
function FillTemplate() {
  for (const element of document.querySelectorAll('[data-label]')) {
    element.textContent = Label(element.dataset.label);
  }
  for (const element of document.querySelectorAll('[data-aria]')) {
    element.setAttribute('aria-label', Label(element.dataset.aria));
  }
  document.querySelector('h1').textContent = document.title;
  const made = new Intl.DateTimeFormat(kLocale, { dateStyle: 'long' });
  document.getElementById('made').textContent = Label('made', {
    day: made.format(new Date(kAlbum.madeAt * 1000)),
  });
  // What is brought into view isn't covered by the bar at the top.
  const bar = document.querySelector('.bar');
  new ResizeObserver(() => {
    const covered = getComputedStyle(bar).position === 'sticky' ? bar.offsetHeight : 0;
    document.documentElement.style.scrollPaddingTop = `${covered + kRemInPixels}px`;
  }).observe(bar);
  const search = document.getElementById('search');
  search.placeholder = Label('search-hint');
  search.addEventListener('keydown', (event) => {
    if (event.key !== 'Escape' || search.value === '') return;
    event.preventDefault();
    search.value = '';
    search.dispatchEvent(new Event('input'));
  });
  document.addEventListener('keydown', (event) => {
    const typing = event.target.closest('input, select, textarea, dialog') !== null;
    if (event.key !== '/' || event.ctrlKey || event.altKey || event.metaKey || typing) return;
    event.preventDefault();
    search.focus();
    search.select();
  });
}

// Readers of screens read it out when it changes.
function TellCount(shown, all) {
  const count = document.getElementById('count');
  count.textContent = Label('count', { n: NumberText(shown), all: NumberText(all) });
}

// What is shown in full: one dialog for all. When it closes, the browser gives the focus back to
// what opened it.
const kDialog = (() => {
  const dialog = Make('dialog', { 'aria-labelledby': 'dialog-title' });
  document.body.append(dialog);
  dialog.addEventListener('click', (event) => {
    if (event.target === dialog) dialog.close();
  });
  dialog.addEventListener('close', () => {
    if (!dialog.open) dialog.replaceChildren(); // unless opened anew before the event came
  });
  return {
    Open(title, ...children) {
      const close = Button({ class: 'close', 'aria-label': Label('close') }, () => dialog.close());
      close.append(Make('span', { 'aria-hidden': 'true', text: '×' }));
      dialog.replaceChildren(
        Make(
          'div',
          { class: 'sheet' },
          Make('header', {}, Make('h2', { id: 'dialog-title', tabindex: '-1' }, title), close),
          children,
        ),
      );
      if (!dialog.open) dialog.showModal();
      const header = dialog.querySelector('header');
      const heading = header.querySelector('h2');
      // A title that doesn't fit into what stays at the top stands below it once more.
      if (heading.scrollHeight > heading.clientHeight + 2) {
        const copy = heading.cloneNode(true).childNodes;
        header.after(Make('p', { class: 'whole-title', 'aria-hidden': 'true' }, [...copy]));
      }
      dialog.style.scrollPaddingTop = `${header.offsetHeight}px`;
      heading.focus();
      dialog.scrollTop = 0;
    },
    Show(section) {
      section.scrollIntoView();
      section.querySelector('[tabindex]').focus({ preventScroll: true });
    },
  };
})();

// Rows of a title and values: of a text, the field by which it is a link, its types in words, and
// an element of its own.
function Facts(rows) {
  return Make(
    'dl',
    {},
    rows.map(([title, values]) =>
      Make(
        'div',
        {},
        Make('dt', {}, title),
        values.map(({ text, field, types, Element }) =>
          Make(
            'dd',
            {},
            Element?.() ?? LinkedText(field, text, Paragraph(text)),
            types ? Make('small', { text: types }) : null,
          ),
        ),
      ),
    ),
  );
}
const Paragraph = (text) => Make('span', { class: 'lines', dir: 'auto', text: Visible(text) });
// The same rows on paper, where nothing is a link. Of thousands of cards each element counts.
function PaperFacts(rows) {
  return rows.map(([title, values]) =>
    Make(
      'p',
      { class: 'fact' },
      Make('b', { text: title }),
      values.map(({ text, types }, i) => [
        i === 0 ? null : '\n',
        Make('bdi', { text: Visible(text) }),
        types ? Make('small', { text: types }) : null,
      ]),
    ),
  );
}

// The lines that aren't kept as they stand: rows of first, last, verdict, property, why and text.
function MarkList(marks) {
  const rows = marks.map(([first, last, verdict, name, why, text]) =>
    Make(
      'li',
      {},
      Make(
        'p',
        {},
        Make('strong', {
          text: first === last ? Label('line', { n: first }) : Label('lines', { first, last }),
        }),
        ' ',
        Make('code', {}, Isolated(name)),
        ' ',
        Make('span', { class: 'verdict', text: Label(verdict) }),
        why === '' ? null : ': ',
        Make('span', { text: Visible(why) }),
      ),
      Make('pre', { dir: 'auto', text: Visible(text) }),
    ),
  );
  return Make('ul', { class: 'marks', role: 'list' }, rows);
}
function MarkSection(record) {
  if (!record.marks?.length) return null;
  return Make(
    'section',
    { class: 'account', 'aria-labelledby': 'account-title' },
    Make('h3', { id: 'account-title', tabindex: '-1', text: Label('account') }),
    Make('p', { text: Label('account-about') }),
    MarkList(record.marks),
  );
}
function MarkBadge(record) {
  return Make(
    'span',
    { class: 'badge' },
    Make('span', { 'aria-hidden': 'true', text: '✎' }),
    Make('span', { 'aria-hidden': 'true', text: NumberText(record.marks.length) }),
    Hidden(Label('mark', { n: NumberText(record.marks.length) })),
  );
}
function SourceLine(record) {
  if (record.file === undefined) return null;
  return Make(
    'p',
    { class: 'source' },
    Isolated(Label('source', { file: record.file, line: NumberText(record.line) })),
  );
}

// The lines of files that belong to no record have a button in the header.
function OfferFiles() {
  const element = document.getElementById('files');
  const files = element === null ? [] : JSON.parse(element.textContent);
  const button = document.getElementById('files-button');
  if (files.length === 0) return button.remove();
  const lines = files.reduce((sum, { marks }) => sum + marks.length, 0);
  button.textContent = Label('files', { n: NumberText(lines) });
  button.addEventListener('click', () =>
    kDialog.Open(
      Label('files-title'),
      Make('p', { text: Label('files-about') }),
      files.map(({ file, marks }) => [Make('h3', {}, Isolated(file)), MarkList(marks)]),
    ),
  );
}
