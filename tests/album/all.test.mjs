// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// All tests of albums in one process, so that they share a browser.
import './contacts.mjs';
import './calendar.mjs';
import './hostile.mjs';
import './looks.mjs';
