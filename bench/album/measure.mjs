// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// How long an album takes to open, and to answer keys: measure.mjs PAGE.
import { pathToFileURL } from 'node:url';
import { Launch } from '../../tests/album/browser.mjs';

// The first word is typed as soon as the page answers, when nothing is prepared for a search.
const kWords = ['straus', 'はなこ', '017', 'reading group', 'zzz', 'oscar person1'];

const browser = await Launch();
const page = await (await browser.newContext({ viewport: { width: 1200, height: 800 } })).newPage();
const begin = performance.now();
await page.goto(pathToFileURL(process.argv[2]).href, { waitUntil: 'commit', timeout: 60000 });
await page.locator('.card').first().waitFor();
await page.evaluate(
  () =>
    new Promise((resolve) => {
      requestAnimationFrame(() => setTimeout(resolve));
    }),
);
console.log(`opens in ${Math.round(performance.now() - begin)} ms`);

await page.evaluate(() => {
  globalThis.took = [];
  document.addEventListener(
    'beforeinput',
    ({ timeStamp }) =>
      requestAnimationFrame(() =>
        setTimeout(() => {
          globalThis.took.push(performance.now() - timeStamp);
        }),
      ),
    true,
  );
});
await page.locator('#search').focus();
for (const word of kWords) {
  for (const key of word) {
    if (/[ -~]/.test(key)) await page.keyboard.press(key === ' ' ? 'Space' : key);
    else await page.keyboard.insertText(key);
  }
  console.log(`  ${word}: ${await page.locator('#count').textContent()}`);
  await page.keyboard.press('Control+a');
  await page.keyboard.press('Delete');
}
const took = await page.evaluate(() => globalThis.took);
console.log(
  `answers ${took.length} keys: the first in ${Math.round(took[0])} ms, the slowest in ` +
    `${Math.round(Math.max(...took))} ms`,
);
await browser.close();
