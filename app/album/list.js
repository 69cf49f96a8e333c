// SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
// SPDX-License-Identifier: Apache-2.0
//
// Lists that may be long.

// A list of which the cells in view are made, and the one that has the focus. All cells are of one
// size, so that where one stands is known without making it. The arrow keys go from cell to cell;
// only the current one's controls are stops of the tab key.
class Cells {
  // make(key) gives the li of a key; sizes are in rem. more(), if given, tells of further keys when
  // the last ones come into view, none when there are none.
  constructor(list, { make, height, width = Infinity, gap = 0.75, more = null }) {
    Object.assign(this, { list, make, more, width: width * kRemInPixels, gap: gap * kRemInPixels });
    this.step = (height + gap) * kRemInPixels;
    this.keys = [];
    this.cells = new Map();
    this.current = 0;
    this.columns = 1;
    this.awaited = false;
    list.setAttribute('role', 'list');
    list.classList.add('cells');
    const later = () => this.RenderLater();
    addEventListener('scroll', later, { passive: true });
    addEventListener('resize', later);
    list.addEventListener('focusin', (event) => this.TakeFocus(event.target));
    list.addEventListener('keydown', (event) => this.TakeKey(event));
  }
  Show(keys, current = 0) {
    this.keys = keys;
    this.current = current;
    this.Render();
  }
  RenderLater() {
    if (this.awaited) return;
    this.awaited = true;
    requestAnimationFrame(() => {
      this.awaited = false;
      if (this.list.isConnected) this.Render();
    });
  }
  Render() {
    const box = this.list.getBoundingClientRect();
    this.columns = Math.max(1, Math.floor((box.width + this.gap) / (this.width + this.gap)) || 1);
    const ahead = innerHeight / 2;
    const last = Math.ceil((innerHeight - box.top + ahead) / this.step) * this.columns;
    while (last > this.keys.length && this.TakeMore());
    const first = Math.max(0, Math.floor((-box.top - ahead) / this.step) * this.columns);
    const wanted = [];
    for (let i = first; i < Math.min(last, this.keys.length); ++i) wanted.push(i);
    const { current } = this;
    if (current < this.keys.length) {
      if (current < first) wanted.unshift(current);
      else if (current >= last) wanted.push(current);
    }
    this.list.style.height = `${Math.ceil(this.keys.length / this.columns) * this.step}px`;
    this.Place(wanted, (box.width + this.gap) / this.columns);
  }
  Place(wanted, stride) {
    const keep = new Set(wanted.map((i) => this.keys[i]));
    for (const [key, cell] of this.cells) {
      if (keep.has(key)) continue;
      cell.remove();
      this.cells.delete(key);
    }
    let next = this.list.firstChild;
    for (const index of wanted) {
      const key = this.keys[index];
      let cell = this.cells.get(key);
      if (cell === undefined) {
        cell = this.make(key);
        this.cells.set(key, cell);
      }
      if (cell === next) next = next.nextSibling;
      else this.list.insertBefore(cell, next);
      const { style } = cell;
      style.transform =
        `translate(${(index % this.columns) * stride}px, ` +
        `${Math.floor(index / this.columns) * this.step}px)`;
      style.width = `${stride - this.gap}px`;
      style.height = `${this.step - this.gap}px`;
      cell.setAttribute('aria-posinset', index + 1);
      cell.setAttribute('aria-setsize', this.more === null ? this.keys.length : -1);
      cell.dataset.index = index;
      SetStops(cell, index === this.current);
    }
  }
  TakeFocus(element) {
    const cell = element.closest('li[data-index]');
    if (cell === null || Number(cell.dataset.index) === this.current) return;
    const before = this.cells.get(this.keys[this.current]);
    if (before !== undefined) SetStops(before, false);
    this.current = Number(cell.dataset.index);
    SetStops(cell, true);
  }
  TakeKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey || event.shiftKey) return;
    const { current, columns } = this;
    const page = Math.max(1, Math.floor(innerHeight / this.step) - 1) * columns;
    const index = {
      ArrowLeft: columns > 1 ? current - 1 : current,
      ArrowRight: columns > 1 ? current + 1 : current,
      ArrowUp: current - columns,
      ArrowDown: current + columns,
      PageUp: current - page,
      PageDown: current + page,
      Home: 0,
      End: Infinity,
    }[event.key];
    if (index === undefined || !event.target.closest('li[data-index]')) return;
    event.preventDefault();
    if (index === Infinity) while (this.TakeMore());
    this.Focus(Math.max(0, Math.min(index, this.keys.length - 1)));
  }
  // Whether there were further keys.
  TakeMore() {
    const further = this.more?.() ?? [];
    for (const key of further) this.keys.push(key);
    return further.length > 0;
  }
  // Brings a cell into view, below what covers the top, and gives it the focus.
  Focus(index) {
    if (index >= this.keys.length) return;
    this.current = index;
    const covered =
      Math.max(0, document.querySelector('.bar').getBoundingClientRect().bottom) + this.gap;
    const top =
      this.list.getBoundingClientRect().top + Math.floor(index / this.columns) * this.step;
    if (top < covered) scrollBy(0, top - covered);
    else if (top + this.step > innerHeight) scrollBy(0, top + this.step - innerHeight);
    this.Render();
    this.cells.get(this.keys[index]).querySelector('.open').focus({ preventScroll: true });
  }
}

function SetStops(cell, isCurrent) {
  for (const control of cell.querySelectorAll('a, button')) control.tabIndex = isCurrent ? 0 : -1;
}

// Paper shows what make() gives in place of the page, all of it; the page where that is null. The
// cards stand in groups, since the browser goes through all that stands side by side for each page.
const kCardsInAGroup = 50;
function PrintInstead(make) {
  let sheet = null;
  addEventListener('beforeprint', () => {
    sheet?.remove();
    sheet = null;
    const cards = make();
    if (cards === null) return;
    sheet = Make('div', { id: 'paper' }, Make('h1', { text: document.title }));
    for (let i = 0; i < cards.length; i += kCardsInAGroup) {
      sheet.append(Make('div', {}, cards.slice(i, i + kCardsInAGroup)));
    }
    document.body.append(sheet);
  });
  addEventListener('afterprint', () => {
    sheet?.remove();
    sheet = null;
  });
}
