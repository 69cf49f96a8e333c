// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Where texts of records lead.

// What a telephone dials for a number, or an empty text. Pauses before an extension are commas, a
// 0 for calls inside of the country goes behind its code, and letters are keys: capital ones without
// a blank, as words behind a number are none of it.
const kLongestNumber = 100;
const kKeys = ['ABC', 'DEF', 'GHI', 'JKL', 'MNO', 'PQRS', 'TUV', 'WXYZ'];
function Dialled(text) {
  if (text.length > kLongestNumber) return '';
  const number = text
    .normalize('NFKC')
    .trim()
    .replace(/^tel:/i, '')
    .replace(/^(\+.*?)\(\s*0\s*\)/, '$1')
    .replace(/[\s,;]*(?:extension|ext|x|内線|내선)[\s.:=]*(\d+)$/i, ',$1')
    .replace(
      /^(\+?[\d()./\u2010-\u2015 -]{3,}(?<! ))([A-Z]+(?:[\u2010-\u2015-][A-Z]+)*)$/,
      (all, first, word) =>
        first + word.replace(/[A-Z]/g, (key) => 2 + kKeys.findIndex((keys) => keys.includes(key))),
    )
    .replace(/[\s()./\u2010-\u2015-]/g, '');
  if (!/^\+?[0-9*#]+([,;pw][0-9*#]*)*$/i.test(number)) return '';
  return number.replace(/p/gi, ',').replace(/w/gi, ';');
}

// Where a field leads, or an empty text. Nothing of a record gets into a link but an encoded value.
const kLinks = {
  number(text) {
    const dialled = Dialled(text);
    return dialled === '' ? '' : `tel:${encodeURIComponent(dialled).replace('%2B', '+')}`;
  },
  mail(text) {
    const address = /<([^<>]*)>\s*$/.exec(text)?.[1] ?? text;
    const parts = /^([^\s@<>]+)@([^\s@<>]+)$/.exec(address.trim().replace(/^mailto:\s*/i, ''));
    return parts ? `mailto:${encodeURIComponent(parts[1])}@${encodeURIComponent(parts[2])}` : '';
  },
  address: (text) => `geo:0,0?q=${encodeURIComponent(InOneLine(text))}`,
  url(text) {
    if (!/^https?:\/\//i.test(text.trim())) return '';
    const url = new URL(text.trim());
    return /^https?:$/.test(url.protocol) ? url.href : '';
  },
};
function LinkOf(field, text) {
  try {
    return kLinks[field]?.(text) ?? '';
  } catch {
    return ''; // lone surrogates, or no URL
  }
}
function LinkedText(field, text, child = Isolated(text)) {
  const link = LinkOf(field, text);
  if (link === '') return child;
  const leave = field === 'url' ? { target: '_blank', rel: 'noopener noreferrer' } : {};
  return Make('a', { href: link, ...leave }, child);
}
