// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { AlbumOf, Card, Find, Focused, On, Titles } from './pages.mjs';

const kUtf8 = (name, value) => `${name};CHARSET=UTF-8:${value}`;
const kPeople = {
  'people.vcf': [
    Card(
      kUtf8('N', 'Müßig;Jürgen;;;'),
      'TEL;WORK:+49 (30) 555-0134',
      'X-GROUP:Work',
      'BDAY:1980-11-16',
      'X-FOO:bar',
    ),
    Card(
      kUtf8('N', '山田;花子;;;'),
      kUtf8('SOUND;X-IRMC-N', 'ﾔﾏﾀﾞ;ﾊﾅｺ;;;'),
      'EMAIL:hanako@example.jp',
      'X-GROUP:Friends',
    ),
    Card(
      kUtf8('N', 'Łęcki;Søren;;;'),
      kUtf8('ORG', 'Œuvre & Æther'),
      'BDAY:1984-02-29',
      'X-GROUP:Friends',
      'X-GROUP:Work',
    ),
    Card(
      kUtf8('N', 'Çelik;Irmak;;;'),
      kUtf8('NOTE', 'Kızılay'),
      'X-FAVORITE:YES',
      'BDAY:1990-11-17',
      'TITLE:Chemist',
    ),
    Card(
      'N:Adams;Ann;;;',
      kUtf8('ADR;HOME', ';;7 Orchard Lane;Reading;;RG1;'),
      'TEL;CELL:0171 5550199',
    ),
    Card('TEL;HOME:030 77'),
  ].join(''),
};
const kAll = ['Ann Adams', 'Irmak Çelik', 'Søren Łęcki', 'Jürgen Müßig', '山田 花子', '030 77'];

test('contacts are found by what is typed', () =>
  On(AlbumOf(kPeople), async (page) => {
    assert.deepEqual(await Titles(page), kAll);
    const rows = [
      ['mussig', 'Jürgen Müßig'],
      ['JURGEN', 'Jürgen Müßig'],
      ['lecki', 'Søren Łęcki'],
      ['oeuvre aether', 'Søren Łęcki'],
      ['kizilay', 'Irmak Çelik'],
      ['celik chem', 'Irmak Çelik'],
      ['はなこ', '山田 花子'],
      ['ヤマダ', '山田 花子'],
      ['ﾊﾅ', '山田 花子'],
      ['山田', '山田 花子'],
      ['ＨＡＮＡＫＯ', '山田 花子'],
      ['4930555', 'Jürgen Müßig'],
      ['(030) 5550', ''],
      ['0171-555', 'Ann Adams'],
      ['lane ann', 'Ann Adams'],
      ['friends soren', 'Søren Łęcki'],
      ['february 29', 'Søren Łęcki'],
      ['1984-02', 'Søren Łęcki'],
      ['work 555', 'Jürgen Müßig'],
      ['ann celik', ''],
      ['zzz', ''],
    ];
    for (const [words, wanted] of rows) {
      assert.deepEqual(await Find(page, words), wanted === '' ? [] : [wanted], words);
    }
    assert.ok(await page.locator('#nothing').isVisible());
    assert.equal(await page.locator('#count').textContent(), '0 of 6');
    await page.locator('#search').press('Escape');
    assert.deepEqual(await Titles(page), kAll);
  }));

test('groups and the like filter contacts', () =>
  On(AlbumOf(kPeople), async (page) => {
    const Toggle = (name) => page.getByRole('button', { name: new RegExp(`^${name}`) }).click();
    await Toggle('Work');
    assert.deepEqual(await Titles(page), ['Søren Łęcki', 'Jürgen Müßig']);
    await Toggle('Friends');
    assert.deepEqual(await Titles(page), ['Søren Łęcki', 'Jürgen Müßig', '山田 花子']);
    await Toggle('With changed lines');
    assert.deepEqual(await Titles(page), ['Jürgen Müßig']);
    for (const name of ['Work', 'Friends', 'With changed lines', 'Without a group', 'Favourites']) {
      await Toggle(name);
    }
    assert.deepEqual(await Titles(page), ['Irmak Çelik']);
    await Toggle('Favourites');
    assert.equal(await page.locator('#count').textContent(), '3 of 6');
  }));

test('birthdays ahead tell the age that begins', () =>
  On(AlbumOf(kPeople), async (page) => {
    assert.deepEqual(await page.locator('#birthdays li span:last-child > span').allTextContents(), [
      'Today · turns 46',
      'November 17 · turns 36',
      'February 28 · turns 43',
    ]);
  }));

test('links lead where the field says', () => {
  const rows = [
    ['TEL', '+49 (30) 555-01 p 22', 'tel:+493055501%2C22'],
    ['TEL', '+49 (0)30 123', 'tel:+4930123'],
    ['TEL', '(0)30 123', 'tel:030123'],
    ['TEL', '+49 30 1 ext. 6', 'tel:+49301%2C6'],
    ['TEL', '030 1x7', 'tel:0301%2C7'],
    ['TEL', '0800-FLOWERS', 'tel:08003569377'],
    ['TEL', '1-800-GO-WXYZ', 'tel:1800469999'],
    ['TEL', 'tel:+49-30-2', 'tel:+49302'],
    ['TEL', '030 123 HOME', null],
    ['TEL', `030${'A-'.repeat(40000)}`, null],
    ['EMAIL', 'a.b+c@example.org', 'mailto:a.b%2Bc@example.org'],
    ['EMAIL', 'mailto:ann@example.org', 'mailto:ann@example.org'],
    ['EMAIL', 'Ann Lee <ann@example.org>', 'mailto:ann@example.org'],
    ['URL', 'https://example.org/a?b=c', 'https://example.org/a?b=c'],
    ['ADR', ';;1 A & B;Bonn;;;', 'geo:0,0?q=1%20A%20%26%20B%2C%20Bonn'],
  ];
  const cards = rows.map(([name, text], i) => Card(`N:Lee${100 + i};;;;`, `${name}:${text}`));
  return On(AlbumOf({ 'links.vcf': cards.join('') }), async (page) => {
    for (const [i, [, text, wanted]] of rows.entries()) {
      await page.locator('.open').nth(i).click();
      const link = page.locator('dialog dd a');
      const found = (await link.count()) === 0 ? null : await link.getAttribute('href');
      assert.equal(found, wanted, text.slice(0, 99));
      const rel = wanted?.startsWith('https') ? 'noopener noreferrer' : null;
      if (rel !== null) assert.equal(await link.getAttribute('rel'), rel);
      await page.keyboard.press('Escape');
    }
  });
});

// One that only begins as one does, and one that is all transparent.
const kNoPictures = [
  Buffer.from('\x89PNG\r\n\x1a\nand no more', 'latin1').toString('base64'),
  'R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7',
].map((text) => `PHOTO;ENCODING=BASE64:${text}\n`);
test('names are shown by what is to be seen of them', () =>
  On(
    AlbumOf({
      'odd.vcf': [
        Card('N:Doe;John;;Mr.;III', 'X-FOO:bar', kNoPictures[0]),
        Card(kUtf8('N', '\u200b;'), 'EMAIL:ann@example.org'),
        Card(kUtf8('N', '\u3000;'), 'NOTE:none'),
        Card('ORG:Acme', 'TITLE:Chief', kNoPictures[1]),
        Card(kUtf8('N', `${'long '.repeat(500)};`), 'NOTE:below'),
        Card('N:M;', ...Array.from({ length: 13 }, (_, i) => `X-GROUP:G${i}`)),
        Card('N:Z;', `X-GROUP:${'W'.repeat(5000)}`),
      ].join(''),
    }),
    async (page) => {
      const names = await Titles(page);
      assert.deepEqual([names[0], ...names.slice(-2)], ['Acme', 'ann@example.org', '(no name)']);
      assert.equal(await page.locator('.card .work').first().textContent(), 'Chief');
      const doe = page.locator('.card', { hasText: 'John' });
      await doe.locator('.face:not(img)').waitFor();
      assert.equal(await doe.locator('.face').textContent(), 'JD');
      const [who, mark] = [
        await doe.locator('.who').boundingBox(),
        await doe.locator('.mark').boundingBox(),
      ];
      assert.ok(who.x + who.width <= mark.x);
      for (const card of [doe, page.locator('.card').first()]) {
        await card.locator('.open').click();
        await page.getByText('Its picture can’t be shown.').waitFor();
        await page.keyboard.press('Escape');
      }
      await page.locator('#filters summary').click();
      await page.locator('.many .toggle').first().waitFor();
      const groups = await page.locator('.many .toggle').allTextContents();
      assert.deepEqual(groups.slice(1, 4), ['G1 1', 'G2 1', 'G3 1']);
      assert.ok((await page.locator('.many .toggle').nth(-2).boundingBox()).height < 50);
      await Find(page, 'long');
      await page.locator('.open').click();
      assert.ok((await page.locator('dialog header').boundingBox()).height < 130);
      await page.getByText('below').scrollIntoViewIfNeeded();
      assert.match(await page.locator('.whole-title').textContent(), /^(long ?){500}$/);
    },
  ));

test('records may hold very much', () => {
  const groups = Array.from({ length: 70000 }, (_, i) => `X-GROUP:g${i}\n`).join('');
  const notes = Array.from({ length: 70000 }, (_, i) => `NOTE:${i}\n`).join('');
  return On(AlbumOf({ 'much.vcf': Card('N:Lee;Ann;;;', groups + notes) }), async (page) => {
    await page.locator('.open').click();
    assert.match(await page.locator('dialog').textContent(), /g69999.*69999/);
  });
});

test('a mark opens the lines that are not kept', () =>
  On(
    AlbumOf({
      'old.vcf': `garbage\n${kPeople['people.vcf']}`,
    }),
    async (page) => {
      await page.getByRole('button', { name: 'Lines not kept or shown as they stand: 1' }).click();
      assert.equal(await Focused(page), 'Lines that aren’t kept as they stand');
      const account = await page.locator('dialog .marks').textContent();
      assert.match(account, /Line 8 X-FOO dropped: there is no field for itX-FOO:bar/);
      await page.keyboard.press('Escape');
      await page.getByRole('button', { name: 'Lines outside of records: 1' }).click();
      assert.match(await page.locator('dialog').textContent(), /old\.vcf.*Line 1.*garbage/s);
    },
  ));

test('the keyboard alone is enough', () => {
  const cards = Array.from({ length: 300 }, (_, i) =>
    Card(
      `N:Name${String(i).padStart(3, '0')};Ann;;;`,
      `TEL:030 ${i}`,
      `EMAIL:a${i}@example.org`,
      ...(i % 2 === 0 ? ['X-GROUP:Even'] : []),
    ),
  );
  return On(AlbumOf({ 'many.vcf': cards.join('') }), async (page) => {
    const Press = async (...keys) => {
      for (const key of keys) await page.keyboard.press(key);
      return Focused(page);
    };
    assert.equal(await Press('Tab'), 'Skip to the list');
    assert.equal(await Press('Tab'), 'Search');
    assert.equal(await Press('Tab'), 'Even 150');
    assert.equal(await Press('Tab', 'Tab'), 'Ann Name000'); // behind the other filter
    assert.equal(await Press('ArrowRight'), 'Ann Name001');
    assert.equal(await Press('ArrowDown'), 'Ann Name004');
    assert.equal(await Press('End'), 'Ann Name299');
    assert.equal(await page.locator('li:focus-within').getAttribute('aria-posinset'), '300');
    assert.equal(await Press('PageUp'), 'Ann Name290');
    assert.equal(await Press('Tab'), '030 290'); // links of the current card alone are stops
    assert.equal(await Press('Tab'), 'a290@example.org');
    assert.equal(await Press('Shift+Tab', 'Shift+Tab', 'Enter'), 'Ann Name290');
    assert.ok(await page.locator('dialog[open]').isVisible());
    assert.equal(await Press('Tab'), 'Close');
    assert.equal(await Press('Escape'), 'Ann Name290');
    assert.equal(await page.locator('dialog[open]').count(), 0);
    assert.equal(await Press('Home'), 'Ann Name000');
    assert.equal(await Press('/'), 'Search');
    await page.keyboard.type('name29');
    assert.equal(await Press('ArrowDown', 'ArrowRight'), 'Ann Name291');
    const box = await page.locator(':focus').boundingBox();
    assert.ok(box.y > 60 && box.y + box.height < 800);
  });
});

test('other languages sort and name by their rules', () =>
  On(AlbumOf(kPeople, { lang: 'de' }), async (page) => {
    assert.deepEqual(await Find(page, '29. februar'), ['Søren Łęcki']);
    await Find(page, '');
    assert.equal(await page.locator('#count').textContent(), '6 von 6');
    assert.equal(await page.locator('html').getAttribute('lang'), 'de');
  }));
