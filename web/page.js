// The page: the game's main window and its closing window, as the view of the form (src/view/)
// describes them for both fronts. This script only draws what the view says: an element for
// each control at the rectangle it gives, pictures on canvases (the players and the ball on one
// canvas of their own), the others HTML controls, with the role, name, state and Tab stop it
// gives; the arrows, Space, Enter and Escape do what it says. What a person does goes to the
// game through bridge.cpp, and what changed comes back from it as a list. The page holds no
// rule and decides nothing of its own.
'use strict';

const page = {
  views: new Map(),  // control name -> its element and the view last drawn
  ratio: 1,  // device pixels to a CSS pixel
  syncing: false,  // the page, not the person, is moving the focus
  timer: 0,
  wakeups: 0,  // how often the page has woken for the game's timers
  focus: '',
  compact: false,  // the view lays the page out for a small screen
  longPress: 0,  // the timer of a finger held on a control, to show its tip
  pressedLong: false,  // the finger was held: the tap that ends it is no click
};
Module.page = page;

const now = () => performance.now();
const byId = (id) => document.getElementById(id);
const kArrows = { ArrowUp: 0, ArrowDown: 1, ArrowLeft: 2, ArrowRight: 3 };

// ---- the elements --------------------------------------------------------------------------

function clicks(name, el) {
  el.addEventListener('click', () => input(() => Module.click(name, now())));
  return el;
}

// The element for a control of kind `kind` in role `role`.
function makeElement(name, v) {
  if (v.piece) return document.createElement('div');  // painted on the pieces' canvas
  switch (v.kind) {
    case 'picture': {
      // A picture may hold other controls (the board holds its two words): a box round a canvas.
      const picture = clicks(name, document.createElement('div'));
      picture.classList.add('picture');
      picture.appendChild(document.createElement('canvas'));
      return picture;
    }
    case 'command button': {
      const button = clicks(name, document.createElement('button'));
      if (v.image) {
        button.classList.add('picture');
        button.appendChild(document.createElement('canvas'));
        // A flag vanishes when clicked: the mouse leaves the focus where it was.
        if (v.bare) button.addEventListener('mousedown', (e) => e.preventDefault());
      }
      return button;
    }
    case 'check box':
    case 'option button': {
      const label = document.createElement('label');
      const box = clicks(name, document.createElement('input'));
      box.type = v.kind === 'check box' ? 'checkbox' : 'radio';
      label.append(box, document.createElement('span'));
      return label;
    }
    case 'text box': {
      if (v.role !== 'entry') return clicks(name, document.createElement('div'));
      const edit = clicks(name, document.createElement('input'));
      edit.type = 'text';
      edit.spellcheck = false;
      edit.addEventListener('input', () => input(() => {
        if (!Module.edit(name, edit.value, now())) edit.value = view(name).v.caption;
      }));
      return edit;
    }
    case 'scroll bar': {
      const bar = document.createElement('input');
      bar.type = 'range';
      bar.addEventListener('input', () => input(() => Module.scroll(name, Number(bar.value), now())));
      return bar;
    }
    default:
      return document.createElement('div');
  }
}

function view(name) {
  return page.views.get(name);
}

// The element that takes focus and input: a check box's box, not its label.
function target(c) {
  return c.v.kind === 'check box' || c.v.kind === 'option button' ? c.el.firstChild : c.el;
}

// Where a control's element stands: in its container, its window, or on a small screen the panel.
function holderOf(c) {
  if (c.v.parent) return view(c.v.parent).el;
  return byId(c.v.closing ? 'closing' : c.v.panel ? 'panel' : 'main');
}

// Every control into its holder again, in the view's order, later ones on top.
function rehome() {
  for (const c of page.views.values()) if (!c.v.parent) holderOf(c).appendChild(c.el);
}

function create(name, v) {
  const el = makeElement(name, v);
  el.classList.add('control', v.kind.replace(' ', '-'));
  el.classList.toggle('piece', v.piece);
  const c = { name, v, el, hovered: false, down: false };
  page.views.set(name, c);
  el.dataset.control = name;
  target(c).dataset.name = name;
  c.canvas = el.querySelector('canvas');
  if (c.canvas) {
    const redraw = (key, on) => () => { c[key] = on; draw(c); };
    el.addEventListener('pointerenter', redraw('hovered', true));
    el.addEventListener('pointerleave', redraw('hovered', false));
    el.addEventListener('pointerdown', redraw('down', true));
    el.addEventListener('pointerup', redraw('down', false));
    el.addEventListener('focus', () => draw(c));
    el.addEventListener('blur', () => draw(c));
  }
  return c;
}

// ---- drawing what the view says ------------------------------------------------------------

function draw(c) {
  if (!c.canvas) return;
  // A picture turned with the pitch is drawn upright and turned a quarter into its rect.
  const [, , across, down] = c.v.rect;
  const width = c.v.turned ? down : across, height = c.v.turned ? across : down;
  c.canvas.style.transform = c.v.turned
    ? `translate(${(across - width) / 2}px, ${(down - height) / 2}px) rotate(90deg)` : '';
  const w = Math.round(width * page.ratio), h = Math.round(height * page.ratio);
  if (c.canvas.width !== w || c.canvas.height !== h) {
    c.canvas.width = w;
    c.canvas.height = h;
    c.canvas.style.width = `${width}px`;
    c.canvas.style.height = `${height}px`;
  }
  const drawing = Module.drawing(c.name, width, height, c.hovered, c.down,
                                 document.activeElement === c.el);
  paintPicture(c.canvas, JSON.parse(drawing), page.ratio);
  if (c.v.ground) groundDrawn(c);
}

function place(c) {
  const [left, top, width, height] = c.v.rect;
  Object.assign(c.el.style, { left: `${left}px`, top: `${top}px`, width: `${width}px`, height: `${height}px` });
}

// ---- the pieces ------------------------------------------------------------------------------

// The players and the ball move many times a second, so no element is moved, styled or laid
// out for them: they are painted, as the window paints them. A piece wholly on the pitch (the
// ground) is painted into the pitch's own canvas, over a copy of the pitch kept aside, so that a
// step there repaints one canvas in the rectangles it leaves and enters; elsewhere (the teams
// waiting below the pitch, a shot into a goal) it is painted on a transparent canvas over the
// window, where the pieces' elements begin (over the pitch and the goals, under the flags),
// hidden while nothing is on it. Each piece keeps an element for assistive technology, with its
// role and name, invisible and never moved.
const pieces = {
  all: [],  // bottom to top
  ground: null,  // the pitch
  under: document.createElement('canvas'),  // the pitch as drawn, without the pieces
  groundAt: null,  // the pitch's rectangle, in the window's device pixels like every one here
  covered: [],  // parts of the pitch under a control stacked over it (a goal): not ground
  layer: document.createElement('canvas'),
  dirty: { ground: [], layer: [] },  // rectangles to paint again on each
  restand: false,  // the pitch or the window changed: every piece is painted anew
};
pieces.layer.className = 'pieces';
pieces.layer.setAttribute('aria-hidden', 'true');
page.pieces = pieces;

const meets = (a, b) => a[0] < b[0] + b[2] && b[0] < a[0] + a[2] &&
                        a[1] < b[1] + b[3] && b[1] < a[1] + a[3];
const inside = (a, b) => a[0] >= b[0] && a[1] >= b[1] && a[0] + a[2] <= b[0] + b[2] &&
                         a[1] + a[3] <= b[1] + b[3];
const devicePixels = (rect) => rect.map((v) => Math.round(v * page.ratio));

// Where a piece is painted, and on which: null while it is not on show.
function stand(c) {
  c.at = c.v.shown ? devicePixels(c.v.rect) : null;
  const g = pieces.groundAt;
  c.on = !c.at ? null : g && inside(c.at, g) && !pieces.covered.some((r) => meets(r, c.at))
    ? 'ground' : 'layer';
}

// The piece's picture, drawn once for its size and look and copied at each move.
function drawPiece(c) {
  const [, , width, height] = c.v.rect;
  c.picture.width = Math.round(width * page.ratio);
  c.picture.height = Math.round(height * page.ratio);
  paintPicture(c.picture, JSON.parse(Module.drawing(c.name, width, height, false, false, false)),
               page.ratio);
}

// The piece's view changed: where it was and where it is now are painted again.
function movePiece(c, redrawn) {
  if (!c.picture) {
    c.picture = document.createElement('canvas');
    pieces.all.push(c);
  }
  if (redrawn) drawPiece(c);
  const was = c.at, wasOn = c.on;
  stand(c);
  const at = c.at, on = c.on;
  if (!redrawn && String(was) === String(at) && wasOn === on) return;
  // A step of a few pixels repaints the one rectangle round where it was and where it is.
  if (was && at && wasOn === on && meets(was, at)) {
    const left = Math.min(was[0], at[0]), top = Math.min(was[1], at[1]);
    pieces.dirty[on].push([left, top, Math.max(was[0] + was[2], at[0] + at[2]) - left,
                           Math.max(was[1] + was[3], at[1] + at[3]) - top]);
  } else {
    if (was) pieces.dirty[wasOn].push(was);
    if (at) pieces.dirty[on].push(at);
  }
}

// The pitch was drawn anew (its size, its look, the mouse over it): kept aside without the
// pieces, which are painted on it again at once.
function groundDrawn(c) {
  pieces.ground = c;
  pieces.under.width = c.canvas.width;
  pieces.under.height = c.canvas.height;
  pieces.under.getContext('2d').drawImage(c.canvas, 0, 0);
  pieces.restand = true;
  paintPieces();
}

// Every piece stood again on the pitch or the layer, and both painted anew.
function restand() {
  pieces.restand = false;
  const ground = pieces.ground;
  pieces.groundAt = ground && devicePixels(ground.v.rect);
  pieces.covered = [];
  if (ground) {
    const views = [...page.views.values()];
    for (const c of views.slice(views.indexOf(ground) + 1)) {
      if (c.v.piece) break;
      const at = devicePixels(c.v.rect);
      if (c.v.shown && !c.v.parent && meets(at, pieces.groundAt)) pieces.covered.push(at);
    }
  }
  for (const c of pieces.all) stand(c);
  pieces.dirty.ground = ground ? [pieces.groundAt] : [];
  pieces.dirty.layer = [[0, 0, pieces.layer.width, pieces.layer.height]];
}

// How the pitch's canvas is reached from the window: shifted to its corner, and turned a
// quarter back where the pitch is turned (its canvas is drawn upright and turned into place).
function groundTransform() {
  const [left, top, width] = pieces.groundAt;
  return pieces.ground.v.turned ? [0, -1, 1, 0, -top, left + width] : [1, 0, 0, 1, -left, -top];
}

// Rectangle `r` of the window in the pitch canvas's own pixels.
function onGroundCanvas([x, y, width, height]) {
  const [left, top, across] = pieces.groundAt;
  return pieces.ground.v.turned ? [y - top, left + across - x - width, height, width]
                                : [x - left, y - top, width, height];
}

// Each dirty rectangle of a canvas cleared (to the pitch on the pitch) and the pieces standing
// on that canvas there painted again, bottom to top.
function paintPieces() {
  if (pieces.restand) restand();
  const repaint = (canvas, on, clear, transform) => {
    const ctx = canvas.getContext('2d');
    for (const r of pieces.dirty[on]) {
      ctx.save();
      ctx.setTransform(1, 0, 0, 1, 0, 0);
      ctx.globalAlpha = 1;
      clear(ctx, r);
      ctx.setTransform(...transform);
      for (const c of pieces.all)
        if (c.on === on && meets(c.at, r)) ctx.drawImage(c.picture, c.at[0], c.at[1]);
      ctx.restore();
    }
    pieces.dirty[on] = [];
  };
  if (pieces.ground) {
    repaint(pieces.ground.canvas, 'ground', (ctx, r) => {
      const at = onGroundCanvas(r);
      ctx.beginPath();
      ctx.rect(...at);
      ctx.clip();
      ctx.clearRect(...at);
      ctx.drawImage(pieces.under, ...at, ...at);
    }, groundTransform());
  }
  repaint(pieces.layer, 'layer', (ctx, r) => {
    ctx.beginPath();
    ctx.rect(...r);
    ctx.clip();
    ctx.clearRect(...r);
  }, [1, 0, 0, 1, 0, 0]);
  const empty = !pieces.all.some((c) => c.on === 'layer');
  if (pieces.layer.hidden !== empty) pieces.layer.hidden = empty;
}

// The layer covers the main window of `width` x `height` CSS pixels; after a change of size or
// pixel density every piece is painted anew.
function sizePieces([width, height], sharper) {
  const layer = pieces.layer;
  Object.assign(layer.style, { width: `${width}px`, height: `${height}px` });
  layer.width = Math.round(width * page.ratio);
  layer.height = Math.round(height * page.ratio);
  if (sharper) for (const c of pieces.all) drawPiece(c);
  pieces.restand = true;
}

// A text longer than its box is shown smaller rather than cut off, by the view's rule.
const measure = document.createElement('canvas').getContext('2d');
function fitText(c) {
  const v = c.v;
  let px = v.px;
  if (v.kind === 'text box') {
    measure.font = `${v.italic ? 'italic ' : ''}${v.bold ? 'bold ' : ''}${px}px ${getComputedStyle(c.el).fontFamily}`;
    px = Module.fitText(px, v.rect[2], measure.measureText(v.caption).width);
  }
  c.el.style.fontSize = `${px}px`;
}

// Everything of the view but its place and picture.
function restate(c) {
  const v = c.v, el = c.el, box = target(c);
  el.hidden = !v.shown;
  if ('disabled' in box) box.disabled = !v.enabled;
  else box.setAttribute('aria-disabled', String(!v.enabled));
  el.classList.toggle('disabled', !v.enabled);
  el.classList.toggle('pressable', v.pressable);
  if (!c.canvas) el.style.backgroundColor = v.back;  // a picture paints its own
  el.style.color = v.fore;
  el.style.fontWeight = v.bold ? 'bold' : 'normal';
  el.style.fontStyle = v.italic ? 'italic' : 'normal';
  el.style.textAlign = v.left ? 'left' : 'center';
  fitText(c);
  if (v.tip) el.title = v.tip;
  else el.removeAttribute('title');
  // The role, name and Tab stop the view gives; a picture that is pressed is a button.
  const role = { button: el.tagName === 'BUTTON' ? null : 'button', graphic: 'img', group: 'group',
                 text: 'note', label: null }[v.role];
  if (role) el.setAttribute('role', role);
  if (v.name) box.setAttribute('aria-label', v.name);
  else box.removeAttribute('aria-label');
  if (v.role === 'graphic' && !v.name) el.setAttribute('aria-hidden', 'true');
  else el.removeAttribute('aria-hidden');
  if (v.focusable) box.tabIndex = v.tab > 0 ? v.tab : -1;
  switch (v.kind) {
    case 'command button':
      if (!c.canvas) el.textContent = v.caption;
      break;
    case 'check box':
    case 'option button':
      el.lastChild.textContent = v.caption;
      box.checked = v.checked === 1;
      break;
    case 'text box':
      // Only the game's own changes are written back, so typing is never overwritten.
      if (v.role === 'entry') {
        if (v.caption !== c.said && el.value !== v.caption) el.value = v.caption;
        el.readOnly = v.locked;
        el.classList.toggle('locked', v.locked);
      } else {
        el.textContent = v.caption;
        el.style.justifyContent = v.left ? 'flex-start' : 'center';
      }
      c.said = v.caption;
      break;
    case 'scroll bar':
      Object.assign(el, { min: v.min, max: v.max, step: v.step });
      el.value = v.value;
      break;
    case 'frame':
      el.dataset.caption = v.caption;
      break;
    case 'label':
      el.textContent = v.caption;
      break;
  }
}

// Brings the page up to the game: the windows, each control the view says changed, the focus.
function refresh() {
  if (page.ended) return;
  const s = JSON.parse(Module.changes());
  if ('visible' in s) byId('main').hidden = !s.visible;
  if ('closing' in s) byId('closing').hidden = !s.closing;
  if ('back' in s) document.body.style.backgroundColor = s.back;
  if ('news' in s) {
    byId('news').textContent = s.news;
    byId('news').hidden = !s.news;
  }
  const fresh = [];
  let rehoming = false;
  for (const name of Object.keys(s.controls)) {
    const change = s.controls[name];
    let c = view(name);
    if (!c) {
      c = create(name, change);
      fresh.push(c);
    }
    const moved = Object.keys(change).length === 1;
    rehoming = rehoming || !fresh.includes(c) && 'panel' in change && change.panel !== c.v.panel;
    Object.assign(c.v, change);
    if (c.v.piece) movePiece(c, fresh.includes(c) || change.redrawn);
    else place(c);
    if (c.v.ground) pieces.restand = true;
    if (!moved) restate(c);
    if (fresh.includes(c) || change.redrawn) draw(c);
  }
  // Into its container (which may come later in the list) or its window, in the list's order.
  for (const c of fresh) holderOf(c).appendChild(c.el);
  if (rehoming) rehome();
  // The pieces' layer stands where their elements begin.
  if ((fresh.length > 0 || rehoming) && pieces.all.length > 0) pieces.all[0].el.before(pieces.layer);
  paintPieces();
  if ('focus' in s) page.focus = s.focus;
  focusAsTheGameHasIt('focus' in s);
  schedule();
}

// The keyboard focus goes where the game has it, when the game moved it, or when the control
// that had it was hidden or disabled under it.
function focusAsTheGameHasIt(moved) {
  const c = view(page.focus);
  if (!c || !c.v.shown || !c.v.enabled) return;
  const el = target(c);
  if (!moved && (document.activeElement === el || document.activeElement !== document.body)) return;
  page.syncing = true;
  el.focus({ preventScroll: true });
  page.syncing = false;
}

// A person's input reaches the game, then the page shows what it did.
function input(deliver) {
  deliver();
  refresh();
  // A box the browser ticked on the click shows what the game made of it: refused, it is clear.
  for (const c of page.views.values())
    if (c.v.checked >= 0) target(c).checked = c.v.checked === 1;
}

function layout() {
  const ratio = window.devicePixelRatio || 1;
  const sharper = ratio !== page.ratio;
  page.ratio = ratio;
  const sizes = JSON.parse(Module.layout(innerWidth, innerHeight, page.ratio));
  const size = (id, [width, height]) => Object.assign(byId(id).style, { width: `${width}px`, height: `${height}px` });
  const at = (id, [left, top, width, height]) => Object.assign(byId(id).style,
    { left: `${left}px`, top: `${top}px`, width: `${width}px`, height: `${height}px` });
  size('main', sizes.main);
  sizePieces(sizes.main, sharper);
  size('closing', sizes.closing);
  at('news', sizes.news);
  Object.assign(byId('news').style, { fontSize: `${sizes.newsPx}px`,
                                      fontStyle: sizes.newsItalic ? 'italic' : 'normal',
                                      fontWeight: sizes.newsBold ? 'bold' : 'normal' });
  page.compact = sizes.compact;
  document.body.classList.toggle('compact', sizes.compact);
  byId('menu').hidden = !sizes.compact;
  if (sizes.compact) {
    at('menu', sizes.menu);
    byId('menu').style.fontSize = `${sizes.menuPx}px`;
    at('panel', sizes.panel);
    byId('panel').setAttribute('aria-label', sizes.panelName);
    byId('panel-room').style.height = `${sizes.panelHeight}px`;
  }
  showPanel(sizes);
  if (page.views.size === 0) return;
  refresh();
  if (sharper) for (const c of page.views.values()) draw(c);
}

// The panel as the view has it: open or closed, and the words on its button.
function showPanel(state) {
  byId('panel').hidden = !(page.compact && state.open);
  byId('menu').textContent = state.menuCaption;
  byId('menu').setAttribute('aria-expanded', String(state.open));
}

// ---- touch -----------------------------------------------------------------------------------

// A finger held still on a control shows what the mouse's tooltip shows; the tap that ends it
// presses nothing.
const kLongPressMs = 500;
function onPointerDown(e) {
  hideTip();
  page.pressedLong = false;
  if (e.pointerType !== 'touch') return;
  const el = e.target.closest && e.target.closest('[data-control]');
  const c = el && view(el.dataset.control);
  if (!c || !c.v.tip) return;
  page.longPress = setTimeout(() => {
    page.pressedLong = true;
    showTip(c);
  }, kLongPressMs);
}

function endPress() {
  clearTimeout(page.longPress);
  page.longPress = 0;
}

function showTip(c) {
  const tip = byId('tip'), r = c.el.getBoundingClientRect();
  tip.textContent = c.v.tip;
  tip.hidden = false;
  const w = tip.offsetWidth, h = tip.offsetHeight;
  const left = Math.max(4, Math.min(innerWidth - w - 4, r.left + r.width / 2 - w / 2));
  const top = r.top - h - 8 >= 4 ? r.top - h - 8 : Math.min(innerHeight - h - 4, r.bottom + 8);
  Object.assign(tip.style, { left: `${left}px`, top: `${top}px` });
}

function hideTip() {
  byId('tip').hidden = true;
}

// ---- keys ------------------------------------------------------------------------------------

function onKey(e) {
  if (byId('message').open) return;
  const name = e.target.dataset && e.target.dataset.name;
  const c = name && view(name);
  if (e.key === 'Escape') {
    const exit = Module.escapeTarget();
    if (exit) input(() => Module.click(exit, now()));
    return;
  }
  if (c && e.key in kArrows) {
    const move = JSON.parse(Module.arrow(name, kArrows[e.key]));
    if (move.own) return;
    e.preventDefault();
    const to = view(move.to);
    if (!to) return;
    target(to).focus({ preventScroll: true });
    if (move.press) input(() => Module.click(move.to, now()));
    return;
  }
  // A picture that is pressed takes Space and Enter as a button does.
  if (c && c.v.pressable && c.el.tagName !== 'BUTTON' && (e.key === ' ' || e.key === 'Enter')) {
    e.preventDefault();
    input(() => Module.click(name, now()));
  }
  // Every typed character reaches the game, whichever control has the focus, as the window's.
  if (e.key.length !== 1 || e.ctrlKey || e.metaKey || e.altKey) return;
  input(() => Module.key(e.key.charCodeAt(0), now()));
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
  byId('message-text').textContent = text;
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
  page.timer = 0;
  page.ended = true;
  byId('main').hidden = true;
  byId('closing').hidden = true;
  byId('ended').hidden = false;
};

// ---- start -------------------------------------------------------------------------------------

function startPage() {
  Module.start(now());
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
  addEventListener('keydown', onKey);
  byId('menu').addEventListener('click', () => {
    showPanel(JSON.parse(Module.togglePanel()));
    refresh();
  });
  addEventListener('pointerdown', onPointerDown, true);
  for (const end of ['pointerup', 'pointercancel', 'pointermove'])
    addEventListener(end, (e) => { if (end !== 'pointermove' || e.pointerType !== 'touch' ||
                                       Math.hypot(e.movementX, e.movementY) > 8) endPress(); }, true);
  addEventListener('click', (e) => {
    if (!page.pressedLong) return;
    page.pressedLong = false;
    e.stopPropagation();
    e.preventDefault();
  }, true);
  addEventListener('contextmenu', (e) => e.preventDefault());
  addEventListener('focusin', (e) => {
    if (!page.syncing && e.target.dataset && e.target.dataset.name) Module.focus(e.target.dataset.name);
  });
  document.body.classList.add('ready');
}

Module.onRuntimeInitialized = startPage;
