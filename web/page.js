// The page: the game's main window and its closing window, as the desktop shows them. Every
// control is an element placed from the stored layout, pictures on canvases, the others HTML
// controls; the match is told in words in a live region, and Tab takes the window's order.
// What a person does goes to the game through bridge.cpp, and what the game changed comes back
// from it. The page holds no rule.
'use strict';

const kTwipsPerPixel = 15;
const kMainClient = [18720, 11520];  // twips, as src/ui/layout.h has them
const kClosingClient = [6240, 4440];

const page = {
  views: new Map(),  // control name -> its view
  scale: 1,
  ratio: 1,  // device pixels to a CSS pixel
  syncing: false,  // the page, not the person, is moving the focus
  timer: 0,
  wakeups: 0,  // how often the page has woken for the game's timers
  focus: '',
};
Module.page = page;

const now = () => performance.now();
const byId = (id) => document.getElementById(id);

// ---- the views ---------------------------------------------------------------------------

function makeElement(name, info) {
  const clicks = (el) => {
    el.addEventListener('click', () => input(() => Module.click(name, now())));
    return el;
  };
  switch (info.kind) {
    case 'picture': {
      // A picture may hold other controls (the board holds its two words): a box round a canvas.
      const picture = clicks(document.createElement('div'));
      picture.setAttribute('role', 'img');
      picture.appendChild(document.createElement('canvas'));
      return picture;
    }
    case 'command button': {
      const button = clicks(document.createElement('button'));
      if (info.bare !== undefined) {
        button.className = 'picture';
        button.appendChild(document.createElement('canvas'));
        // A flag vanishes when clicked: the mouse leaves the focus where it was.
        if (info.bare) button.addEventListener('mousedown', (e) => e.preventDefault());
      }
      return button;
    }
    case 'check box':
    case 'option button': {
      const label = document.createElement('label');
      const box = clicks(document.createElement('input'));
      box.type = info.kind === 'check box' ? 'checkbox' : 'radio';
      label.append(box, document.createElement('span'));
      return label;
    }
    case 'text box': {
      const edit = clicks(document.createElement('input'));
      edit.type = 'text';
      edit.spellcheck = false;
      edit.addEventListener('input', () => input(() => {
        if (!Module.edit(name, edit.value, now())) edit.value = view(name).state.text;
      }));
      return edit;
    }
    case 'scroll bar': {
      const bar = document.createElement('input');
      bar.type = 'range';
      bar.addEventListener('input', () => input(() => Module.scroll(name, Number(bar.value), now())));
      return bar;
    }
    case 'news': {
      const news = document.createElement('p');
      news.setAttribute('aria-live', 'polite');  // read out whenever it changes
      return news;
    }
    case 'frame': {
      const frame = document.createElement('div');
      frame.setAttribute('role', 'group');
      return frame;
    }
    default:
      return document.createElement('div');
  }
}

function view(name) {
  return page.views.get(name);
}

// The element that takes focus and input: a check box's box, not its label.
function target(v) {
  return v.info.kind === 'check box' || v.info.kind === 'option button' ? v.el.firstChild : v.el;
}

function build() {
  const all = JSON.parse(Module.controls());
  for (const name of Object.keys(all)) {
    const info = all[name];
    const el = makeElement(name, info);
    el.classList.add('control', info.kind.replace(' ', '-'));
    const v = { name, info, el, state: null, drawn: '', hovered: false, down: false };
    page.views.set(name, v);
    target(v).dataset.name = name;
    v.canvas = el.querySelector('canvas');
    if (el.classList.contains('picture')) {
      const redraw = (key, on) => () => { v[key] = on; draw(v, true); };
      el.addEventListener('pointerenter', redraw('hovered', true));
      el.addEventListener('pointerleave', redraw('hovered', false));
      el.addEventListener('pointerdown', redraw('down', true));
      el.addEventListener('pointerup', redraw('down', false));
      el.addEventListener('focus', () => draw(v, true));
      el.addEventListener('blur', () => draw(v, true));
    }
  }
  // Into its frame (which may come later in the list) or its window, in the list's order.
  for (const v of page.views.values()) {
    const holder = v.info.parent ? view(v.info.parent).el : byId(v.info.closing ? 'closing' : 'main');
    holder.appendChild(v.el);
  }
  // The banners wait under the pitch until they slide out below it.
  for (const name of ['Banner(0)', 'Banner(1)']) byId('main').prepend(view(name).el);
  // Tab takes the game's order, as in the window.
  JSON.parse(Module.tabOrder()).forEach((name, i) => { view(name).tab = i + 1; });
}

// ---- placing -------------------------------------------------------------------------------

// Both edges are rounded from the form's own grid, on device pixels, so that neighbours never
// gap or overlap.
function rectOf(v) {
  const absolute = (w) => {
    let [left, top] = w.state.at;
    for (let p = w.info.parent; p; p = view(p).info.parent) {
      left += view(p).state.at[0];
      top += view(p).state.at[1];
    }
    const s = page.scale / kTwipsPerPixel;
    const snap = (t) => Math.round(t * s * page.ratio) / page.ratio;
    return [snap(left), snap(top), snap(left + w.state.at[2]), snap(top + w.state.at[3])];
  };
  const [x0, y0, x1, y1] = absolute(v);
  if (!v.info.parent) return [x0, y0, x1 - x0, y1 - y0];
  const [px, py] = absolute(view(v.info.parent));
  return [x0 - px, y0 - py, x1 - x0, y1 - y0];
}

function place(v) {
  const [left, top, width, height] = rectOf(v);
  Object.assign(v.el.style, {
    left: `${left}px`, top: `${top}px`, width: `${width}px`, height: `${height}px`,
    fontSize: `${v.info.px * page.scale}px`,
  });
  if (v.canvas) {
    const w = Math.round(width * page.ratio), h = Math.round(height * page.ratio);
    if (v.canvas.width !== w || v.canvas.height !== h) {
      v.canvas.width = w;
      v.canvas.height = h;
      v.canvas.style.width = `${width}px`;
      v.canvas.style.height = `${height}px`;
      v.size = [width, height];
      draw(v, true);
    }
  }
}

// Each window at the largest scale that fits the browser's, keeping proportions; the closing
// window at the scale the main window has, as small beside it as on the desktop.
function layout() {
  page.ratio = window.devicePixelRatio || 1;
  page.scale = Math.min(innerWidth * kTwipsPerPixel / kMainClient[0],
                        innerHeight * kTwipsPerPixel / kMainClient[1]);
  const size = (id, client) => {
    byId(id).style.width = `${client[0] / kTwipsPerPixel * page.scale}px`;
    byId(id).style.height = `${client[1] / kTwipsPerPixel * page.scale}px`;
  };
  size('main', kMainClient);
  size('closing', kClosingClient);
  for (const v of page.views.values()) {
    if (!v.state) continue;
    place(v);
    if (v.info.kind === 'text box') fitText(v);
  }
}

// ---- what the game shows ------------------------------------------------------------------

function draw(v, force) {
  if (!v.canvas || !v.state || !v.size) return;
  const s = v.state;
  const key = JSON.stringify([s.image, s.back, s.enabled, s.number, v.size, page.ratio]);
  if (!force && key === v.drawn) return;
  v.drawn = key;
  const drawing = Module.drawing(v.name, v.size[0], v.size[1], v.hovered, v.down,
                                 document.activeElement === v.el);
  paintPicture(v.canvas, JSON.parse(drawing), page.ratio);
}

function show(v) {
  const s = v.state, was = v.was;
  const el = v.el, box = target(v);
  if (String(s.at) !== String(was.at)) place(v);
  el.hidden = !s.visible;
  if ('disabled' in box) box.disabled = !s.enabled;
  // Tab passes over a locked box and an option not chosen, as the window's.
  const passedOver = s.locked || (v.info.kind === 'option button' && s.value === 0);
  if (v.tab) box.tabIndex = passedOver ? -1 : v.tab;
  el.classList.toggle('disabled', !s.enabled);
  if (!v.canvas) el.style.backgroundColor = s.back;  // a picture paints its own
  el.style.color = s.fore;
  el.style.fontWeight = v.info.bold ? 'bold' : 'normal';
  el.style.fontStyle = v.info.italic ? 'italic' : 'normal';
  el.style.textAlign = v.info.left ? 'left' : 'center';
  if (s.tip) el.title = s.tip;
  else el.removeAttribute('title');
  // A name for those who cannot see the picture: its tip, else its caption, else the control.
  if (v.info.kind !== 'news' && (v.canvas || !s.text)) {
    box.setAttribute('aria-label', s.tip || s.text || v.name);
  }
  switch (v.info.kind) {
    case 'command button':
      if (!v.canvas) el.textContent = s.text;
      break;
    case 'check box':
    case 'option button':
      el.lastChild.textContent = s.text;
      box.checked = s.value !== 0;  // re-asserted: a click toggles the box before the game says
      break;
    case 'text box':
      // Only the game's own changes are written back, so typing is never overwritten.
      if (s.text !== was.text && el.value !== s.text) el.value = s.text;
      el.readOnly = s.locked;
      el.classList.toggle('locked', s.locked);
      fitText(v);
      break;
    case 'scroll bar':
      Object.assign(el, { min: s.min, max: s.max, step: s.step });
      el.value = s.value;
      break;
    case 'news':
      el.textContent = s.text;
      break;
    case 'frame':
    case 'label':
      if (s.text !== was.text) el.dataset.caption = s.text;
      if (v.info.kind === 'label') el.textContent = s.text;
      break;
  }
  draw(v, false);
}

// A text longer than its box is shown smaller rather than cut off, as in the window.
function fitText(v) {
  const full = v.info.px * page.scale;
  v.el.style.fontSize = `${full}px`;
  const room = v.el.clientWidth, needed = v.el.scrollWidth;
  if (needed > room && room > 0) v.el.style.fontSize = `${full * Math.max(0.6, room / needed)}px`;
}

// Brings the page up to the game: the windows, each control that changed, the focus.
function refresh() {
  const s = JSON.parse(Module.state());
  byId('main').hidden = !s.visible;
  byId('closing').hidden = !s.closing;
  document.body.style.backgroundColor = s.back;
  // Every state first: a control is placed inside its frame's.
  const changed = Object.keys(s.controls).map((name) => {
    const v = view(name);
    v.was = v.state || {};
    v.state = s.controls[name];
    return v;
  });
  changed.forEach(show);
  if (s.focus !== page.focus) {
    page.focus = s.focus;
    const v = view(s.focus);
    if (v && v.state.enabled && v.state.visible) {
      page.syncing = true;
      target(v).focus({ preventScroll: true });
      page.syncing = false;
    }
  }
  schedule();
}

// A person's input reaches the game, then the page shows what it did.
function input(deliver) {
  deliver();
  refresh();
}

// ---- time ------------------------------------------------------------------------------------

// Sleeps until the game's running timers next need the page; never while nothing runs.
function schedule() {
  clearTimeout(page.timer);
  page.timer = 0;
  const ms = Module.nextWakeIn(now());
  if (ms >= 0) page.timer = setTimeout(wake, ms);
}

function wake() {
  page.wakeups++;
  if (Module.wake(now())) refresh();
  else schedule();
}

// ---- the platform: message boxes, web pages, the end ----------------------------------------

page.showMessage = (title, text, critical) => {
  const box = byId('message');
  byId('message-title').textContent = title;
  byId('message-text').textContent = text.replaceAll('\r', '\n');
  box.classList.toggle('critical', critical);
  box.showModal();
};

page.openUrl = (url) => {
  const tab = window.open(url, '_blank');
  if (tab) tab.opener = null;
  return tab !== null;
};

page.quit = () => {
  clearTimeout(page.timer);
  byId('ended').hidden = false;
};

// ---- start -------------------------------------------------------------------------------------

function startPage() {
  Module.start(now());
  build();
  layout();
  refresh();
  addEventListener('resize', layout);
  // A change of the screen's pixel density (another screen, the browser's zoom) redraws crisp.
  const watchRatio = () => matchMedia(`(resolution: ${devicePixelRatio}dppx)`)
    .addEventListener('change', () => { layout(); watchRatio(); }, { once: true });
  watchRatio();
  byId('message').addEventListener('close', () => {
    Module.messageClosed(now());
    refresh();
  });
  byId('closing').addEventListener('click', (e) => {
    if (e.target === byId('closing')) input(() => Module.clickClosing(now()));
  });
  // Every typed character reaches the game, whichever control has the focus, as the window's.
  addEventListener('keydown', (e) => {
    if (byId('message').open || e.key.length !== 1 || e.ctrlKey || e.metaKey || e.altKey) return;
    const code = e.key.charCodeAt(0);
    if (code > 0 && code < 256) input(() => Module.key(code, now()));
  });
  addEventListener('focusin', (e) => {
    if (!page.syncing && e.target.dataset && e.target.dataset.name) Module.focus(e.target.dataset.name);
  });
  document.body.classList.add('ready');
}

Module.onRuntimeInitialized = startPage;
