// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
import js from '@eslint/js';
import { readFileSync } from 'node:fs';

// The scripts of each page become one, in this order: a file knows the names of those ahead of it.
const kPages = [
  ['shared.js', 'links.js', 'list.js', 'cards.js', 'contacts.js'],
  ['shared.js', 'links.js', 'list.js', 'days.js', 'items.js', 'views.js', 'calendar.js'],
];
const kBrowser = [
  'CSS',
  'Event',
  'ResizeObserver',
  'URL',
  'addEventListener',
  'console',
  'document',
  'getComputedStyle',
  'globalThis',
  'innerHeight',
  'navigator',
  'performance',
  'requestAnimationFrame',
  'scrollBy',
  'scrollTo',
  'scrollY',
  'setTimeout',
];
const kNode = ['Buffer', 'URL', 'console', 'performance', 'process', 'setTimeout'];
const Readonly = (names) => Object.fromEntries(names.map((name) => [name, 'readonly']));

function NamesOf(file) {
  const text = readFileSync(new URL(`../../app/album/${file}`, import.meta.url), 'utf8');
  const single = [...text.matchAll(/^(?:async )?(?:function\*?|const|let|class) (\w+)/gm)].map(
    ([, name]) => name,
  );
  const several = [...text.matchAll(/^const \[([\w, ]+)\]/gm)].flatMap(([, names]) =>
    names.split(', '),
  );
  return [...single, ...several];
}
// Functions of a page's files may be used by other ones, whatever their order; but not by none.
function RulesOf(file) {
  const pages = kPages.filter((page) => page.includes(file));
  const others = [...new Set(pages.flat())].filter((other) => other !== file);
  const text = others
    .map((other) => readFileSync(new URL(`../../app/album/${other}`, import.meta.url), 'utf8'))
    .join('\n');
  const used = NamesOf(file).filter((name) => new RegExp(`\\b${name}\\b`).test(text));
  return {
    files: [`app/album/${file}`],
    languageOptions: {
      sourceType: 'script',
      globals: Readonly([...kBrowser, ...others.flatMap(NamesOf)]),
    },
    rules: {
      'no-unused-vars': [
        'error',
        { vars: 'all', varsIgnorePattern: `^(${used.join('|') || '-'})$` },
      ],
      'no-redeclare': ['error', { builtinGlobals: false }],
      // Records never become markup or scripts.
      'no-eval': 'error',
      'no-implied-eval': 'error',
      'no-new-func': 'error',
      'no-restricted-properties': [
        'error',
        ...['innerHTML', 'outerHTML', 'insertAdjacentHTML', 'write', 'setHTMLUnsafe'].map(
          (property) => ({ property }),
        ),
      ],
      'no-control-regex': 'off',
    },
  };
}

const kStyle = {
  curly: ['error', 'multi-line'],
  eqeqeq: 'error',
  'no-var': 'error',
  'prefer-const': 'error',
  'no-shadow': 'error',
  'no-implicit-globals': 'off',
};
export default [
  js.configs.recommended,
  {
    linterOptions: { reportUnusedDisableDirectives: 'error' },
    languageOptions: { ecmaVersion: 2024 },
    rules: kStyle,
  },
  ...[...new Set(kPages.flat())].map(RulesOf),
  { files: ['**/*.mjs'], languageOptions: { globals: Readonly([...kNode, ...kBrowser]) } },
];
