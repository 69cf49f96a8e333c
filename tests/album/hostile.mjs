// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Whatever records hold is shown as text. On() fails on scripts that run and on requests.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { test } from 'node:test';
import { AlbumOf, Calendar, Card, Find, On } from './pages.mjs';

const kTexts = [
  '<script>alert(1)</script>',
  '"><img src=x onerror=alert(1)>',
  '</script><script>alert(1)</script>',
  '<!--<script>',
  "'-alert(1)-'",
  '{{script}}{{data}}',
  '<svg onload=alert(1)>',
  '<style>*{display:none}</style>',
  'javascript:alert(1)',
  ' JaVaScRiPt:alert(1)',
  'data:text/html,<script>alert(1)</script>',
  'vbscript:msgbox(1)',
  'file:///etc/passwd',
  '//example.org/x',
  'https://',
  'http:javascript:alert(1)',
  'https://example.org/"><script>alert(1)</script>',
  'a@example.org?bcc=b@example.org',
  'a@example.org,b@example.org',
  'a%0d%0aBcc:b@example.org',
  '+49 30;ext=<b>&body=x',
  'bell\x07 escape\x1b[31m delete\x7f',
  'unpaired\ud800',
  'a\u202eb\u202dc',
  '\u2067\u05d0',
  'line\u2028end',
  'ש\u05dcום',
  'W'.repeat(3000),
  '__proto__',
  'constructor',
  '-1',
  '{"a":1}',
  'true',
];
// The unpaired surrogate, which no charset of a text has, gets into the page's data.
function Unpaired(album) {
  const page = readFileSync(album, 'utf8');
  assert.ok(page.includes('unpairedX'));
  writeFileSync(album, page.replaceAll('unpairedX', 'unpaired\\ud800'));
  return album;
}
const Plain = (text) => text.replace('\ud800', 'X');
const Property = (name, text) =>
  `${name};CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:${[...Buffer.from(Plain(text))]
    .map((byte) => `=${byte.toString(16).padStart(2, '0').toUpperCase()}`)
    .join('')}`;
const Shown = (text) =>
  text
    .replace('\x07', '\u2407')
    .replace('\x1b', '\u241b')
    .replace('\x7f', '\u2421')
    .replace('\ud800', '\ufffd')
    .trim();

// All elements that could run or fetch something, and links by their schemes.
const Dangers = (page) =>
  page.evaluate(() => ({
    elements: [
      ...document.querySelectorAll(
        'iframe, object, embed, svg, form, base, link, main script, dialog script, ' +
          'img:not([src^="data:image/"]), [style*="url"]',
      ),
    ].map((element) => element.outerHTML),
    attributes: [...document.querySelectorAll('*')]
      .flatMap((element) => element.getAttributeNames())
      .filter((name) => name.startsWith('on')),
    links: [...document.querySelectorAll('a[href]')]
      .map((link) => link.href)
      .filter(
        (link) =>
          !/^(tel:[+\d*#%A-F]+$|mailto:[^?&,;]+$|geo:0,0\?q=[^&]*$|https?:\/\/example\.org\/|file:.*#list$)/.test(
            link,
          ),
      ),
  }));
async function AssertHarmless(page) {
  assert.deepEqual(await Dangers(page), { elements: [], attributes: [], links: [] });
  assert.ok(
    await page.evaluate(
      () => document.documentElement.scrollWidth <= document.documentElement.clientWidth,
    ),
    'the page is too wide',
  );
}

test('contacts can hold any text', () =>
  On(
    Unpaired(
      AlbumOf({
        '"><img src=x onerror=alert(1)>&lt;.vcf':
          '<b>\n' +
          kTexts
            .map((text) =>
              Card(
                ...['FN', 'ORG', 'TITLE', 'NICKNAME', 'NOTE', 'URL', 'EMAIL', 'ADR', 'X-GROUP'].map(
                  (name) => Property(name, text),
                ),
                Property('N', text).replace(/:/, ':;'),
                Property('X-HOSTILE', text),
                `TEL:${Plain(text)}`,
                `PHOTO;ENCODING=BASE64;TYPE=PNG:${Buffer.from(`<svg onload="alert(1)">${Plain(text)}</svg>`).toString('base64')}\n`,
              ),
            )
            .join(''),
      }),
    ),
    async (page) => {
      await AssertHarmless(page);
      await page.locator('#files-button').click();
      assert.match(
        await page.locator('dialog h3').textContent(),
        /"><img src=x onerror=alert\(1\)>&lt;\.vcf/,
      );
      await page.keyboard.press('Escape');
      await page.locator('#filters summary').click();
      const names = new Set();
      await page.locator('#list .open').first().focus();
      for (let i = 0; i < kTexts.length; ++i) {
        await page.keyboard.press('Enter');
        names.add(await page.locator('dialog h2').textContent());
        await AssertHarmless(page);
        await page.keyboard.press('Escape');
        await page.keyboard.press('ArrowRight');
      }
      for (const text of kTexts) {
        assert.ok(
          [...names].some((name) => name.includes(Shown(text).replace(/\s.*/s, ''))),
          text.slice(0, 99),
        );
        await page.locator('#search').fill(text.replace('\ud800', '').slice(0, 50));
      }
      await page.pdf();
      await AssertHarmless(page);
    },
  ));

// A pattern that isn't linear takes minutes for one of them, and the page has half of one to open.
test('contacts can hold long texts', () =>
  On(
    AlbumOf({
      'long.vcf': [' ', 'a@', '<', '1', '1 ext', '(0', '=0A '].map((part) => {
        const text = `a${part.repeat(3e5 / part.length)}b`;
        return Card(
          ...['N', 'ORG', 'TEL', 'EMAIL', 'ADR', 'URL', 'X-GROUP'].map(
            (name) => `${name};ENCODING=QUOTED-PRINTABLE:${text}`,
          ),
        );
      }).join(''),
      'accents.vcf': ['\u0301\u0323', '\u0323\u0301']
        .map((accents) => Card(`N;CHARSET=UTF-8:a${accents.repeat(2e5)}b`))
        .join(''),
      'many.vcf': Card(`N:${'a'.repeat(3e5)}`, ...new Array(2e4).fill('ORG:a')),
    }),
    async (page) => {
      assert.equal(await page.locator('#list .open').count(), 10);
      assert.equal((await Find(page, 'ab')).length, 2);
    },
  ));

test('items can hold any text', () =>
  On(
    Unpaired(
      AlbumOf({
        'any.vcs': Calendar(
          ...kTexts.flatMap((text, i) =>
            ['VEVENT', 'VTODO', 'VMEMO'].map((kind) => [
              kind,
              ...['SUMMARY', 'LOCATION', 'DESCRIPTION', 'CATEGORIES', 'X-COLOR', 'X-HOSTILE'].map(
                (name) => Property(name, text),
              ),
              ...(kind === 'VEVENT' ? [`DTSTART:202611${10 + (i % 7)}T120000Z`] : []),
            ]),
          ),
        ),
      }),
    ),
    async (page) => {
      await AssertHarmless(page);
      await page.locator('.more').first().click();
      const titles = await page.locator('dialog .item bdi').allTextContents();
      assert.ok(titles.includes('<script>alert(1)</script>'));
      await AssertHarmless(page);
      await page.keyboard.press('Escape');
      for (const view of ['week', 'list', 'todos', 'memos']) {
        await page.locator(`#views [data-view=${view}]`).click();
        await AssertHarmless(page);
        await page.locator('#list button:not(.day)').first().click();
        await AssertHarmless(page);
        await page.keyboard.press('Escape');
      }
      const found = [];
      for (const text of kTexts) {
        await page.locator('#search').fill(text.replace('\ud800', '').slice(0, 50));
        found.push(...(await page.locator('#list .open bdi').allTextContents()));
      }
      for (const text of kTexts) assert.ok(found.includes(Shown(text)), text.slice(0, 99));
      await page.pdf();
      await AssertHarmless(page);
    },
  ));

test('what isn’t the page’s own script does not run', async () => {
  const album = AlbumOf({ 'one.vcf': Card('N:Lee;Ann;;;') });
  const page = readFileSync(album, 'utf8');
  writeFileSync(
    album,
    page.replace(
      '<footer',
      '<img src="x" onerror="document.title = 1"><script>document.title = 1</script><footer',
    ),
  );
  await assert.rejects(
    On(album, async (open) => {
      assert.match(await open.title(), /Contacts/);
    }),
    /violation: script-src/,
  );
});
