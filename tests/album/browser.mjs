// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
import { existsSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';

const kPlaces = [process.env.CHROMIUM, '/usr/bin/chromium', '/usr/bin/chromium-browser'];

// Chromium without a window. Fonts are those of fonts.conf alone, and drawn the same everywhere.
export function Launch() {
  const fonts = fileURLToPath(new URL('fonts.conf', import.meta.url));
  return chromium.launch({
    executablePath: kPlaces.find((place) => place !== undefined && existsSync(place)),
    chromiumSandbox: process.getuid() !== 0,
    env: { ...process.env, FONTCONFIG_FILE: fonts, LANG: 'C.UTF-8', TZ: 'UTC' },
    args: [
      '--font-render-hinting=none',
      '--disable-lcd-text',
      '--force-color-profile=srgb',
      '--lang=en-US',
    ],
  });
}
