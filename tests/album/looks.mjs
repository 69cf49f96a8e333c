// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// What a reader sees: on a screen, with a reader of screens, on paper.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { existsSync, readFileSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import pixelmatch from 'pixelmatch';
import { PNG } from 'pngjs';
import { AlbumOf, Calendar, Card, On } from './pages.mjs';

const kRoot = fileURLToPath(new URL('../../', import.meta.url));
const Samples = (...names) => names.map((name) => `${kRoot}samples/${name}`);
const kAlbums = {
  contacts: () => AlbumOf(Samples('friends.vcf', 'desktop.vcf', 'phone-japan.vcf')),
  calendar: () => AlbumOf(Samples('calendar.vcs'), { options: ['--from', '2026', '--to', '2028'] }),
};
const kAxe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

async function AssertAccessible(page, where) {
  const { violations } = await page.evaluate(() => globalThis.axe.run());
  const told = violations.map(
    ({ id, nodes }) =>
      `${where}: ${id}: ${nodes.map(({ html, failureSummary }) => `${html} ${failureSummary}`).join('; ')}`,
  );
  assert.deepEqual(told, []);
}
for (const colorScheme of ['light', 'dark']) {
  test(`contacts are accessible, ${colorScheme}`, () =>
    On(
      kAlbums.contacts(),
      async (page) => {
        await page.evaluate(kAxe);
        await AssertAccessible(page, 'cards');
        await page.locator('.toggle').first().click();
        await page.locator('.mark').first().click();
        await AssertAccessible(page, 'dialog');
        await page.keyboard.press('Escape');
        await page.setViewportSize({ width: 400, height: 800 });
        await AssertAccessible(page, 'narrow');
      },
      { colorScheme },
    ));
  test(`a calendar is accessible, ${colorScheme}`, () =>
    On(
      kAlbums.calendar(),
      async (page) => {
        await page.evaluate(kAxe);
        for (const view of ['month', 'week', 'list', 'todos', 'memos']) {
          await page.locator(`#views [data-view=${view}]`).click();
          await AssertAccessible(page, view);
        }
        await page.locator('#list .open').first().click();
        await AssertAccessible(page, 'dialog');
        await page.keyboard.press('Escape');
        await page.locator('#search').fill('choir');
        await AssertAccessible(page, 'found');
      },
      { colorScheme },
    ));

  // The pictures of the first page of the documentation. ALBUM_PICTURES=new makes them anew.
  for (const [kind, album] of Object.entries(kAlbums)) {
    test(`${kind} look as they did, ${colorScheme}`, () =>
      On(
        album(),
        async (page) => {
          const file = `${kRoot}docs/images/album-${kind}-${colorScheme}.png`;
          const seen = await page.screenshot();
          if (process.env.ALBUM_PICTURES === 'new') return writeFileSync(file, seen);
          assert.ok(existsSync(file), file);
          const [now, before] = [seen, readFileSync(file)].map((bytes) => PNG.sync.read(bytes));
          assert.deepEqual([now.width, now.height], [before.width, before.height]);
          const differ = pixelmatch(now.data, before.data, null, now.width, now.height, {
            threshold: 0.15,
          });
          if (differ > (now.width * now.height) / 200) {
            const place = `${tmpdir()}/album-${kind}-${colorScheme}.png`;
            writeFileSync(place, seen);
            assert.fail(`${differ} pixels differ from ${file}: ${place}`);
          }
        },
        { colorScheme },
      ));
  }
}

// The text of each page of paper.
async function Paper(page) {
  const pdf = await page.pdf({ format: 'A4' });
  const pages = execFileSync('pdftotext', ['-layout', '-', '-'], { input: pdf })
    .toString()
    .split('\f')
    .slice(0, -1);
  assert.equal(pages.length, pdf.toString('latin1').match(/\/Type\s*\/Page\b(?!s)/g).length);
  return pages;
}
test('paper has all contacts that are found, none of them cut', () =>
  On(
    AlbumOf({
      'many.vcf': Array.from({ length: 90 }, (_, i) =>
        Card(
          `N:Name${i};Ann;;;`,
          `TEL:030 ${i}`,
          ...(i % 3 === 0 ? ['X-GROUP:Third'] : []),
          ...Array.from({ length: i % 5 }, () => 'EMAIL:ann@example.org'),
          `NOTE:end of ${i}`,
        ),
      ).join(''),
    }),
    async (page) => {
      const pages = await Paper(page);
      assert.ok(pages.length >= 6 && pages.length <= 12, `${pages.length} pages`);
      const Numbers = (text, pattern) => [...text.matchAll(pattern)].map(([, number]) => number);
      for (const text of pages) {
        assert.deepEqual(Numbers(text, /Ann Name(\d+)/g), Numbers(text, /end of (\d+)/g));
      }
      assert.equal(Numbers(pages.join(''), /Ann Name(\d+)/g).length, 90);
      assert.doesNotMatch(pages.join(''), /Search|Without a group|90 of 90/);
      await page.getByRole('button', { name: 'Third 30' }).click();
      assert.equal(Numbers((await Paper(page)).join(''), /Ann Name(\d+)/g).length, 30);
      assert.equal(await page.locator('#paper').count(), 0);
    },
  ));

test('paper has the view of a calendar', () =>
  On(
    AlbumOf({
      'many.vcs': Calendar(
        ['VEVENT', 'SUMMARY:Daily', 'DTSTART:20261101T120000Z', 'RRULE:D1 #500'],
        ...Array.from({ length: 6 }, (_, i) => [
          'VEVENT',
          `SUMMARY:Talk${i}`,
          `DTSTART:20261117T1${i}0000Z`,
        ]),
      ),
    }),
    async (page) => {
      const month = (await Paper(page)).join('');
      assert.equal(month.match(/Daily/g).length, 35);
      assert.equal(month.match(/Talk\d/g).length, 6); // though a screen shows three of a day
      await page.locator('#views [data-view=list]').click();
      const list = (await Paper(page)).join('');
      assert.equal(list.match(/Daily/g).length, 365); // a year from the shown day on
      assert.doesNotMatch(month + list, /Search|My time zone/);
    },
  ));
