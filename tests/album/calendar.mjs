// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AlbumOf, Calendar, Find, Focused, On, Titles } from './pages.mjs';

// The round's zone leaves its summer a week behind the viewer's.
const kTexts = {
  'office.vcs': Calendar(
    [
      'VEVENT',
      'TZ:-05:00',
      'DAYLIGHT:TRUE;-04:00;20260308T020000;20261101T020000;EST;EDT',
      'SUMMARY:Round',
      'DTSTART:20261019T130000Z',
      'DTEND:20261019T140000Z',
      'RRULE:W1 MO #4',
      'LOCATION:Attic',
    ],
    ['VEVENT', 'SUMMARY:Fair', 'DTSTART:20261030T000000', 'DTEND:20261101T240000', 'X-FOO:bar'],
    ['VEVENT', 'SUMMARY:Night train', 'DTSTART:20261112T220000Z', 'DTEND:20261113T050000Z'],
    ['VTODO', 'SUMMARY:Pay', 'DUE:20261101T120000Z', 'STATUS:NEEDS ACTION'],
    ['VTODO', 'SUMMARY:Renew', 'DUE:20261130T120000Z', 'STATUS:NEEDS ACTION', 'PRIORITY:1'],
    ['VTODO', 'SUMMARY:Paint', 'STATUS:NEEDS ACTION'],
    [
      'VTODO',
      'SUMMARY:Call',
      'DUE:20261001T120000Z',
      'STATUS:COMPLETED',
      'COMPLETED:20261002T120000Z',
    ],
    ['VMEMO', 'SUMMARY:The key hangs behind the stove'],
  ),
};
const kOffice = (settings) => AlbumOf(kTexts, settings);

// Days of the shown month that have something, with what it is.
const DaysOf = (page) =>
  page
    .locator('.month td:has(.item)')
    .evaluateAll((cells) =>
      Object.fromEntries(
        cells.map((cell) => [
          new Date(cell.dataset.day * 864e5).toISOString().slice(5, 10),
          [...cell.querySelectorAll('.item')]
            .map((item) => item.textContent.replace(/[\u202f\s]+/g, ' ').trim())
            .join(', '),
        ]),
      ),
    );
const Shift = (hour) => `${hour}:00 ${hour < 12 ? 'AM' : 'PM'} Round`;

test('repeats stand on each of their days, by either clock', () =>
  On(kOffice(), async (page) => {
    await page.locator('#month').selectOption('October');
    const viewers = await DaysOf(page);
    const october = {
      '10-19': '3:00 PM Round',
      '10-26': '2:00 PM Round',
      '10-30': '✎1Lines not kept or shown as they stand: 1Fair',
    };
    for (const [day, text] of Object.entries(october)) assert.equal(viewers[day], text, day);
    await page.locator('#next').click();
    const november = await DaysOf(page);
    assert.equal(november['11-02'], '3:00 PM Round');
    assert.equal(
      november['11-01'],
      '✎1Lines not kept or shown as they stand: 1Fair, 1:00 PM ☐To-doPay',
    );
    assert.equal(november['11-12'], '11:00 PM Night train');
    assert.equal(november['11-13'], 'Night train');
    await page.locator('#clock select').selectOption({ index: 1 });
    const written = await DaysOf(page);
    assert.deepEqual([written['11-02'], written['11-09']], [Shift(9), Shift(9)]);
    assert.equal(written['11-16'], undefined); // the rule's fourth time was the last one
  }));

test('a month goes by the keyboard', () =>
  On(kOffice(), async (page) => {
    await page.locator('td .day[aria-current]').focus();
    const Press = async (key) => {
      await page.keyboard.press(key);
      return (await Focused(page)).replace(/, 2026/, '');
    };
    assert.equal(await Press('ArrowLeft'), 'Sunday, November 15: 0');
    assert.equal(await Press('ArrowUp'), 'Sunday, November 8: 0');
    assert.equal(await Press('End'), 'Saturday, November 14: 0');
    assert.equal(await Press('PageUp'), 'Wednesday, October 14: 0');
    assert.equal(await page.locator('#period').textContent(), 'October 2026');
    for (const key of ['ArrowDown', 'Home', 'ArrowRight']) await Press(key);
    assert.equal(await Focused(page), 'Monday, October 19, 2026: 1');
    await Press('Tab');
    await Press('Enter');
    assert.match(await page.locator('dialog').textContent(), /Round.*Attic/s);
    await Press('Escape');
    assert.match(await Focused(page), /Round/);
    await page.locator('#year').fill('9999');
    await page.keyboard.press('Tab');
    await page.locator('#month').selectOption('December');
    await page.locator('td .day[tabindex="0"]').focus();
    await Press('PageDown');
    assert.equal(await Focused(page), 'Friday, December 31, 9999: 0');
  }));

test('an item tells its times, its rule and its lines', () =>
  On(kOffice(), async (page) => {
    await Find(page, 'attic');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('Enter');
    const text = (await page.locator('dialog').innerText()).replace(/[\u202f\u00a0]/g, ' ');
    for (const part of [
      'Monday, October 19, 2026 at 3:00 PM',
      'Monday, October 19, 2026 at 9:00 AM',
      'every week: Monday (4 in all)',
      'Attic',
      'office.vcs, line 3',
    ]) {
      assert.ok(text.includes(part), text);
    }
    await page.keyboard.press('Escape');
    await Find(page, 'fair');
    await page.locator('.rows .open').click();
    assert.match(
      await page.locator('dialog .marks').textContent(),
      /X-FOO dropped: there is no field for it/,
    );
    assert.doesNotMatch(await page.locator('dialog').innerText(), /\d:\d\d/); // it is all day long
  }));

test('views of a week, a list, to-dos and memos', () =>
  On(kOffice(), async (page) => {
    const View = (name) => page.getByRole('button', { name, exact: true }).click();
    await page.locator('#previous').click();
    await page.locator('#month').selectOption('November');
    await View('List');
    assert.match(await page.locator('#period').textContent(), /November 16/);
    await page.locator('#month').selectOption('October');
    assert.deepEqual((await Titles(page)).slice(0, 4), [
      'Round',
      'Round',
      '✎1Lines not kept or shown as they stand: 1Fair',
      '☐To-doPay',
    ]);
    await View('To-dos');
    assert.deepEqual(await Titles(page), ['☐To-doPay', '☐To-doRenew', '☐To-doPaint', '☑DoneCall']);
    assert.deepEqual(await page.locator('.under:is(h3)').allTextContents(), [
      'Overdue',
      'Open',
      'Without a date',
      'Done',
    ]);
    await View('Memos');
    assert.deepEqual(await Titles(page), ['The key hangs behind the stove']);
    await View('List');
    await page.locator('#next').click();
    await View('Week');
    const night = page.locator('.hours .item', { hasText: 'Night train' });
    assert.equal(await night.count(), 0);
    await page.locator('#previous').click();
    const day = await page.locator('.hours').first().boundingBox();
    const boxes = await Promise.all([0, 1].map((i) => night.nth(i).boundingBox()));
    assert.ok(Math.abs((boxes[0].y - day.y) / day.height - 23 / 24) < 0.01);
    assert.ok(Math.abs(boxes[1].height / day.height - 6 / 24) < 0.01);
  }));

test('a search finds items of all kinds', () =>
  On(kOffice(), async (page) => {
    assert.deepEqual(await Find(page, 'pA'), ['☐To-doPay', '☐To-doPaint']);
    assert.deepEqual(await Find(page, 'STÖVE key'), ['The key hangs behind the stove']);
    assert.equal(await page.locator('#count').textContent(), '1 of 8');
    await page.locator('#search').press('Escape');
    assert.ok(await page.locator('.month').isVisible());
  }));

test('weeks begin as the language has it, or the reader’s kind of it', async () => {
  for (const [lang, locale, first] of [
    ['en', 'en-US', 'Sunday'],
    ['en', 'en-GB', 'Monday'],
    ['de', 'en-US', 'Montag'],
    ['ja', 'en-US', '日曜日'],
  ]) {
    await On(
      kOffice({ lang }),
      async (page) => {
        const weekday = page.locator('.month th').first().locator('.unseen');
        assert.equal(await weekday.textContent(), first);
      },
      { locale },
    );
  }
});

test('what a text has of more days, of repeats and of lines is told', () =>
  On(
    AlbumOf({
      'odd.vcs': Calendar(
        ['VEVENT', 'SUMMARY:First', 'DTSTART:19000120T120000Z'],
        ['VEVENT', 'SUMMARY:Night', 'DTSTART:20261115T210000Z', 'DTEND:20261116T020000Z'],
        ['VEVENT', 'SUMMARY:Long', 'DTSTART:20261020T110000Z', 'DTEND:20271120T110000Z'],
        ['VEVENT', 'SUMMARY:Daily', 'DTSTART:20261116T080000Z', 'RRULE:D1 #100', 'CLASS:PRIVATE'],
        [
          'VTODO',
          'SUMMARY:Water',
          'DTSTART:20261101T110000Z',
          'DUE:20261101T120000Z',
          'RRULE:W1 SU #10',
        ],
        ['VTODO', 'SUMMARY:Not mine', 'DUE:20261101T120000Z', 'STATUS:DECLINED', 'PRIORITY:2'],
        ['VMEMO', 'DESCRIPTION;ENCODING=QUOTED-PRINTABLE:Milk=0D=0A eggs=0D=0A=0D=0Aflour'],
      ),
    }),
    async (page) => {
      const View = (name) => page.locator(`#views [data-view=${name}]`).click();
      const Texts = async (selector) =>
        (await page.locator(selector).allTextContents()).map((text) =>
          text.replace(/[\u202f\s]+/g, ' '),
        );
      assert.equal(await page.locator('.item', { hasText: 'Water' }).count(), 5);
      await View('week');
      const whole = await page.locator('.wholes .item').first().boundingBox();
      const frame = await page.locator('.week-frame').boundingBox();
      assert.ok(whole.y > frame.y && whole.y < frame.y + 80);
      assert.deepEqual((await Texts('.hours .item')).slice(-1), ['Daily 9:00 AM']);
      await View('list');
      assert.deepEqual((await Texts('#list .time')).slice(0, 3), [
        'Oct 20, 1:00 PM – Nov 20, 2027, 12:00 PM',
        'Nov 15, 10:00 PM – 3:00 AM',
        '9:00 AM',
      ]);
      await page.locator('#list .open').first().focus();
      await page.keyboard.press('End');
      assert.match(await Texts('li:focus-within .under').then(String), /Feb 23, 2027/);
      await page.locator('#year').fill('0');
      await page.keyboard.press('Tab');
      assert.equal(await page.locator('#year').inputValue(), '2026');
      await page.locator('#year').fill('1900');
      await page.keyboard.press('Tab');
      await page.locator('#month').selectOption('January');
      assert.deepEqual((await Texts('#list .under:is(h3)')).slice(0, 2), [
        'Sat, Jan 20, 1900',
        'Tue, Oct 20, 2026',
      ]);
      await View('todos');
      assert.deepEqual(await Texts('#list .under:is(h3)'), ['Open', 'Declined or delegated']);
      assert.equal((await Texts('#list .time'))[0], 'Nov 22, 2026, 1:00 PM');
      await View('memos');
      assert.deepEqual(await Texts('.memo'), ['Milkeggs flour']);
      await page.locator('#list .open').click();
      assert.match(await page.locator('dialog dd').innerText(), /^Milk\n eggs\n\nflour$/);
      await page.keyboard.press('Escape');
      for (const [words, title] of [
        ['private', 'Daily'],
        ['every week', '☐To-doWater'],
        ['priority 2', '☐To-doNot mine'],
        ['january 20, 1900', 'First'],
      ]) {
        assert.deepEqual(await Find(page, words), [title], words);
      }
    },
  ));

test('a calendar opens where something is, and counts what is shown', async () => {
  for (const [start, month, behind] of [
    ['20100531T100000Z', 'May 2010', 'June 30, 2010'],
    ['20270101T100000Z', 'January 2027', 'February 1, 2027'],
    ['20270131T233000Z', 'February 2027', 'March 1, 2027'],
  ]) {
    await On(
      AlbumOf({ 'one.vcs': Calendar(['VEVENT', 'SUMMARY:One', `DTSTART:${start}`]) }),
      async (page) => {
        const Texts = () => page.locator('#period, #count').allTextContents();
        assert.equal(await page.locator('#period').textContent(), month);
        await page.locator('#views [data-view=list]').click();
        assert.deepEqual(await Titles(page), ['One']);
        await page.locator('#next').click();
        assert.ok((await Texts()).join().includes(behind), await Texts());
        assert.ok((await Texts()).includes('0 of 1'), await Texts());
        assert.ok(await page.locator('#nothing').isVisible());
      },
    );
  }
});

// Its clocks are changed on 29 March and 25 October.
test('what a change of clocks lies in ends, and is due, as the text has it', () =>
  On(
    AlbumOf(
      {
        'change.vcs': Calendar(
          ['VEVENT', 'SUMMARY:Watch', 'DTSTART:20260328T100000', 'DTEND:20260329T100000'],
          [
            'VTODO',
            'SUMMARY:Water',
            'DTSTART:20261024T120000',
            'DUE:20261026T120000',
            'RRULE:W1 SA #2',
          ],
          [
            'VEVENT',
            'SUMMARY:Fast',
            'DTSTART:20100312T000000',
            'DTEND:20100313T000000',
            'RRULE:D1 20100316T000000',
          ],
        ),
      },
      { zone: 'Europe/Berlin' },
    ),
    async (page) => {
      const Rows = async (selector) =>
        (await page.locator(selector).allTextContents()).map((text) =>
          text.replace(/[\u202f\s]+/g, ' '),
        );
      for (const index of [0, 1]) {
        await page.locator('#clock select').selectOption({ index });
        await page.locator('#views [data-view=month]').click();
        await page.locator('#month').selectOption('October');
        assert.deepEqual(Object.keys(await DaysOf(page)), ['10-26']);
        assert.match((await DaysOf(page))['10-26'], /^12:00 PM/);
        await page.locator('#month').selectOption('November');
        assert.match((await DaysOf(page))['11-02'], /^12:00 PM/);
        await page.locator('#month').selectOption('March');
        await page.locator('#views [data-view=list]').click();
        assert.match((await Rows('.row .time'))[0], /^10:00 AM – Mar 29, 10:00 AM$/);
      }
      await Find(page, 'water');
      await page.locator('#list .open').click();
      const text = (await page.locator('dialog').innerText()).replace(/[\u202f\u00a0]/g, ' ');
      assert.match(text, /Monday, October 26, 2026 at 12:00 PM/);
      await page.keyboard.press('Escape');
      await Find(page, 'fast');
      assert.deepEqual(await Rows('.about'), ['every day, until Mar 16, 2010']);
    },
    { timezoneId: 'Europe/Berlin' },
  ));
