// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Albums of texts, open in the one browser of all tests.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { pathToFileURL } from 'node:url';
import { Launch } from './browser.mjs';

const kWork = mkdtempSync(join(tmpdir(), 'pimvobj-album-'));
export const kNow = '2026-11-16T09:30:00Z';
let browser = null;
let pages = 0;
before(async () => {
  browser = await Launch();
});
after(async () => {
  await browser.close();
  rmSync(kWork, { recursive: true });
});

// The page that the program makes of texts, by their names, or of files that are there. It says that
// it was made at kNow.
export function AlbumOf(files, { lang = 'en', zone = 'UTC', options = [] } = {}) {
  const names = Array.isArray(files)
    ? files
    : Object.entries(files).map(([name, text]) => {
        const bytes = typeof text === 'string' ? text.replace(/\r?\n/g, '\r\n') : text;
        writeFileSync(join(kWork, name), bytes);
        return join(kWork, name);
      });
  const out = join(kWork, `${++pages}.html`);
  execFileSync(
    process.env.PIMVOBJ,
    ['album', ...names, '-o', out, '--lang', lang, '--quiet', ...options],
    { env: { ...process.env, TZ: zone }, stdio: ['ignore', 'ignore', 'pipe'] },
  );
  const page = readFileSync(out, 'latin1').replace(
    /"madeAt":\d+/,
    `"madeAt":${Date.parse(kNow) / 1000}`,
  );
  writeFileSync(out, page, 'latin1');
  return out;
}

// Runs a body on an open album, with the clock at kNow. No album may ask for anything, run a script
// but its own, or fail: "amiss" must stay empty.
export async function On(album, body, settings = {}) {
  const context = await browser.newContext({
    viewport: { width: 1200, height: 800 },
    timezoneId: 'Europe/Berlin',
    locale: 'en-US',
    ...settings,
  });
  const page = await context.newPage();
  const amiss = [];
  const url = pathToFileURL(album).href;
  page.on('dialog', (dialog) => {
    amiss.push(`dialog: ${dialog.message()}`);
    dialog.dismiss();
  });
  page.on('popup', (popup) => amiss.push(`window: ${popup.url()}`));
  page.on('pageerror', (error) => amiss.push(`error: ${error.stack}`));
  page.on('console', (message) => amiss.push(`console: ${message.text()}`));
  context.on('request', (request) => {
    if (request.url() !== url && !request.url().startsWith('data:image/')) {
      amiss.push(`request: ${request.url()}`);
    }
  });
  await page.addInitScript(() =>
    document.addEventListener('securitypolicyviolation', (event) => {
      console.error(`violation: ${event.violatedDirective} ${event.blockedURI}`);
    }),
  );
  await page.clock.setFixedTime(kNow);
  await page.goto(url);
  try {
    await body(page);
  } finally {
    await context.close();
  }
  assert.deepEqual(amiss, []);
}

// Names that are shown, in order.
export const Titles = (page) => page.locator('#list .open').allTextContents();
export async function Find(page, words) {
  await page.locator('#search').fill(words);
  return Titles(page);
}
// What has the focus: its name, as readers of screens tell it.
export const Focused = (page) =>
  page.evaluate(() => {
    const element = document.activeElement;
    return element.getAttribute('aria-label') ?? element.textContent.trim();
  });
export const Card = (...lines) => `BEGIN:VCARD\nVERSION:2.1\n${lines.join('\n')}\nEND:VCARD\n`;
export const Calendar = (...items) =>
  `BEGIN:VCALENDAR\nVERSION:1.0\n${items
    .map(([kind, ...lines]) => `BEGIN:${kind}\n${lines.join('\n')}\nEND:${kind}\n`)
    .join('')}END:VCALENDAR\n`;
