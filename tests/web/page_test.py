#!/usr/bin/python3
"""The page in headless Chromium, driven by Debian's chromium-driver through Selenium, from a
file:// address with no network: first paint, Tab, a roll and a kick, Help, a page that cannot
open, Exit and the closing window (the touch test plays a whole match).
Screenshots of each step go to SHOTS.   page_test.py BUILD-WEB/quorvel.html [SHOTS]"""
import os
import sys
import time

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

# The main window's natural size in CSS pixels.
VIEWPORT = {'width': 1248, 'height': 768, 'deviceScaleFactor': 1, 'mobile': False}
PATIENCE = 60  # seconds: a guard against a hang, far beyond what any step needs

# What the test reads of the page.
HELPERS = r'''window.T = {
  view: (name) => Module.page.views.get(name),
  el: (name) => T.view(name).el,
  text: (name) => name === 'news' ? document.getElementById('news').textContent : T.view(name).v.caption,
  shown: (name) => { const el = name === 'news' ? document.getElementById('news') : T.el(name);
                     return !el.hidden && el.offsetParent !== null; },
  // The colour of a picture's canvas at (x, y), fractions of its size: [r, g, b, alpha]; of a
  // piece, as the window shows it where the view puts it.
  colour: (name, x, y) => {
    const c = T.view(name), [left, top, width, height] = c.v.rect.map((v) => v * devicePixelRatio);
    return c.v.piece ? T.seen(Math.floor(left + width * x), Math.floor(top + height * y))
                     : T.pixel(c.canvas, c.canvas.width * x, c.canvas.height * y); },
  pixel: (canvas, x, y) =>
    Array.from(canvas.getContext('2d').getImageData(Math.floor(x), Math.floor(y), 1, 1).data),
  // What the window shows at pixel (x, y) of its device pixels where the pieces go: the pieces'
  // layer over the pitch's canvas, read through the canvas's place on the screen (a turned
  // pitch's canvas is turned a quarter clockwise: its top runs down the right of its box).
  seen: (x, y) => {
    const layer = Module.page.pieces.layer, grass = T.view('Grass'), ratio = devicePixelRatio;
    const over = layer.hidden ? [0, 0, 0, 0] : T.pixel(layer, x, y);
    if (over[3] === 255) return over;
    const box = grass.canvas.getBoundingClientRect();
    const main = document.getElementById('main').getBoundingClientRect();
    const across = main.x + (x + 0.5) / ratio - box.x, down = main.y + (y + 0.5) / ratio - box.y;
    return grass.v.turned ? T.pixel(grass.canvas, down * ratio, (box.width - across) * ratio)
                          : T.pixel(grass.canvas, across * ratio, down * ratio);
  },
  // The pieces on show whose centre the window does not show as their picture's centre (those
  // under another piece there aside).
  misplaced: () => {
    const ratio = devicePixelRatio, pieces = [...Module.page.views.values()]
      .filter((c) => c.v.piece && c.v.shown);
    const centre = (c) => [Math.round(c.v.rect[0] * ratio) + Math.floor(c.picture.width / 2),
                           Math.round(c.v.rect[1] * ratio) + Math.floor(c.picture.height / 2)];
    // Where the page paints a piece: its rectangle rounded to device pixels, as its centre is.
    const covers = (c, [x, y]) => { const [left, top] = c.v.rect.map((v) => Math.round(v * ratio));
      return left <= x && x < left + c.picture.width && top <= y && y < top + c.picture.height; };
    return pieces.filter((c, i) => !pieces.slice(i + 1).some((above) => covers(above, centre(c))) &&
      String(T.seen(...centre(c))) !== String(T.pixel(c.picture, c.picture.width / 2, c.picture.height / 2)))
      .map((c) => c.name);
  },
  // How many bytes of the pitch's canvas and of the pieces' layer differ from each painted
  // afresh, with every piece on show on it where the view puts it, bottom to top: a piece's
  // trail, or a piece not painted where it went.
  stale: () => {
    const p = Module.page.pieces, ratio = devicePixelRatio;
    const grass = T.view('Grass'), [left, top] = grass.v.rect.map((v) => Math.round(v * ratio));
    let wrong = 0;
    for (const [canvas, on, under, x, y] of [[p.layer, 'layer', null, 0, 0],
                                             [grass.canvas, 'ground', p.under, left, top]]) {
      const fresh = document.createElement('canvas');
      [fresh.width, fresh.height] = [canvas.width, canvas.height];
      const ctx = fresh.getContext('2d');
      if (under) ctx.drawImage(under, 0, 0);
      for (const c of Module.page.views.values())
        if (c.v.piece && c.v.shown && c.on === on)
          ctx.drawImage(c.picture, Math.round(c.v.rect[0] * ratio) - x, Math.round(c.v.rect[1] * ratio) - y);
      const seen = canvas.getContext('2d').getImageData(0, 0, canvas.width, canvas.height).data;
      const painted = ctx.getImageData(0, 0, fresh.width, fresh.height).data;
      wrong += seen.reduce((n, byte, i) => n + (byte !== painted[i]), 0);
    }
    return wrong;
  },
  // A piece's own picture at (x, y), fractions of its size.
  picture: (name, x, y) => { const p = T.view(name).picture; return T.pixel(p, p.width * x, p.height * y); },
  flags: () => [...Array(8).keys()].filter((d) => T.shown(`CDdest(${d})`)),
  players: () => [...Array(22).keys()].map((i) => `Player(${i + 1})`).filter(T.shown),
  message: () => document.getElementById('message').open &&
                 document.getElementById('message-title').textContent,
  // What the page presents, read from its elements as a browser hands them to assistive
  // technology and Tab, in the lines of the view's presentation().
  presented: () => {
    const closing = !document.getElementById('closing').hidden, lines = [], stops = [];
    const roles = { button: 'button', img: 'graphic', group: 'group', note: 'text' };
    const kinds = { BUTTON: 'button', checkbox: 'check box', radio: 'radio', text: 'entry',
                    range: 'slider', DIV: 'label' };
    for (const c of Module.page.views.values()) {
      if (c.v.closing !== closing || c.el.hidden || c.el.offsetParent === null) continue;
      const box = c.el.tagName === 'LABEL' ? c.el.firstChild : c.el;
      const role = roles[c.el.getAttribute('role')] || kinds[box.type] || kinds[box.tagName];
      const enabled = !box.disabled && box.getAttribute('aria-disabled') !== 'true';
      const checked = box.type === 'checkbox' || box.type === 'radio' ? Number(box.checked) : -1;
      lines.push([c.name, role, box.getAttribute('aria-label') || '', Number(enabled), checked].join('|'));
      if (box.tabIndex > 0 && enabled) stops.push([box.tabIndex, c.name]);
    }
    stops.sort((a, b) => a[0] - b[0]);
    lines.push('tab|' + stops.map((s) => s[1] + ' ').join(''));
    lines.push('focus|' + (document.activeElement.dataset.name || ''));
    return lines;
  },
}'''


def chromium():
    """Headless Chromium through chromium-driver, its viewport the main window's size."""
    options = webdriver.ChromeOptions()
    for flag in ('--headless=new', '--no-sandbox', '--disable-gpu', '--disable-component-update'):
        options.add_argument(flag)  # chromium-driver adds its own: no first run, no pop-up block
    chrome = webdriver.Chrome(service=Service('chromedriver'), options=options)
    chrome.execute_cdp_cmd('Emulation.setDeviceMetricsOverride', VIEWPORT)
    return chrome


def js(expression, *args):
    return driver.execute_script('return ' + expression, *args)


def wait(expression, what):
    WebDriverWait(driver, PATIENCE, 0.05).until(lambda _: js(expression), what)


def click(name):
    assert js('T.shown(arguments[0])', name), f'{name} is on show to be clicked'
    js('T.el(arguments[0])', name).click()  # a real click at its centre


def key(k):
    ActionChains(driver).send_keys(k).perform()


def shot(name):
    driver.save_screenshot(os.path.join(shots, name))


def first_paint():
    pitch = js("[[0.3, 0.3], [0.7, 0.6]].map(([x, y]) => T.colour('Grass', x, y))")
    assert all(a == 255 and g > r + 40 and g > b + 40 for r, g, b, a in pitch), f'green? {pitch}'
    painted = js('T.players().map((p) => T.colour(p, 0.5, 0.5)[3])')
    assert painted == [255] * 22, f'22 players on show, every one painted: {painted}'
    assert js('T.stale()') == 0 and not js('T.misplaced()'), \
        'the pieces are painted where they stand and nowhere else'
    # In one call: a wake of the page's in between would paint the pieces again anyway.
    assert js("T.el('Grass').dispatchEvent(new PointerEvent('pointerenter')) && T.stale()") == 0 \
        and not js('T.misplaced()'), \
        'the pitch drawn anew under the mouse keeps the ball on it'
    teams = js("[1, 12].map((p) => T.view(`Player(${p})`).v.back)"
                    ".concat([1, 2].map((s) => T.el(`Team(${s})`).value))")
    assert teams[0] != teams[1] and all(teams), f'two teams, two colours, two names: {teams}'
    shot('web-load.png')


def presents_what_the_view_says(moment):
    """The page presents what the view of the form says, as the window does: each control's
    role, name, state, the Tab stops and the focus."""
    got, expected = js('[T.presented(), JSON.parse(Module.presentation())]')
    parted = [f'expected {line}' for line in expected if line not in got] + \
             [f'got      {line}' for line in got if line not in expected]
    assert not parted, f'{moment}, the page is not what the view says:\n  ' + '\n  '.join(parted)


def heard_and_pressed():
    """What a person's clicks and keys do, before Start: as the window has them."""
    click('CHsub(0)')  # refused before a match: the box stays clear
    assert not js("T.el('CHsub(0)').firstChild.checked"), 'a refused Sub box shows clear'
    # The arrows stay in a group of option buttons, choosing as they go.
    js("T.el('OpName(1)').firstChild.focus()")
    key(Keys.DOWN)  # Nations has nothing below it in its group
    key(Keys.LEFT)
    assert js("[document.activeElement.dataset.name, T.view('OpMode(0)').v.checked, "
              "T.view('OpName(0)').v.checked]") == ['OpName(0)', 1, 1], \
        'from Nations the arrows reach Clubs and choose it, and the mode stays'
    key(Keys.RIGHT)  # back to Nations, as the page opened
    assert js("T.view('OpName(1)').v.checked") == 1, 'and back to Nations'
    # Space presses a colour swatch, as a click does.
    back = js("T.view('RainB(0)').v.back")
    js("T.el('RainB(0)').focus()")
    key(Keys.SPACE)
    assert js("T.view('RainB(0)').v.back") != back, 'Space on a swatch gives a new colour'


def kick():
    # Roll with the keypad's 5 until the flags are offered (the walk or a contest may be on).
    for _ in range(100):
        if js('T.flags().length'):
            break
        key(Keys.NUMPAD5)
    assert js('T.flags().length'), 'the keypad 5 rolls the die and flags are offered'
    shot('web-flags.png')
    presents_what_the_view_says('after a roll')
    first = js('T.flags()[0]')
    js('T.el(arguments[0]).focus()', f'CDdest({first})')
    key(Keys.RIGHT if len(js('T.flags()')) > 1 else Keys.SPACE)
    assert js("document.activeElement.dataset.name.startsWith('CDdest(')"), \
        'the arrows move among the flags'
    js('T.el(arguments[0]).focus()', f'CDdest({first})')
    ball = js("T.view('Ball').v.rect")
    click(f'CDdest({js("T.flags()[0]")})')
    # The flight ends when the die is ready for the next roll: white again (black once rolled).
    wait("T.flags().length === 0 && T.view('Cdice').v.back === '#ffffff'",
              'the flags go once one is clicked, the kick ends and the die is ready')
    assert js("T.view('Ball').v.rect") != ball, f'the ball left {ball}'
    assert js("T.colour('Ball', 0.5, 0.5)") == js("T.picture('Ball', 0.5, 0.5)") and \
        js('T.stale()') == 0, \
        'the ball is painted where it went, and nothing is left where it was'
    news = js("T.shown('news') && T.text('news')")
    assert news and 'has the ball' in news, f'the news says who has the ball: {news!r}'
    presents_what_the_view_says('after a kick')
    shot('web-kick.png')


def time_holds_under_the_box():
    """While a message box is up nothing of the match moves and the page sleeps; once it closes
    the match goes on from where it was, not ahead by the time the box was up."""
    up_ms = 2000
    opened = js('[Module.virtualTime(), T.view("Ball").v.rect.join()]')
    time.sleep(up_ms / 1000)
    closing = js('[Module.virtualTime(), T.view("Ball").v.rect.join(), Module.page.timer]')
    assert closing[:2] == opened, f'the match moved under the message box: {opened} {closing}'
    assert not closing[2], 'the page keeps a timer armed under the message box'
    js("document.getElementById('message').addEventListener('close', "
       "() => { window.closedAt = performance.now(); }, { once: true })")
    driver.find_element('css selector', '#message button').click()
    wait('!T.message()', 'OK closes the message box')
    wait(f'Module.virtualTime() > {closing[0]}', 'the match goes on once the box is closed')
    virtual, wall, closed = js('[Module.virtualTime(), performance.now(), window.closedAt]')
    on, since = virtual - closing[0], wall - closed
    assert on <= since + up_ms / 2, \
        f'the match went {on:.0f} ms on in the {since:.0f} ms since the box closed'


def play(url):
    driver.get(url)
    wait("document.body.classList.contains('ready')", 'the page starts')
    # Virtual time: the page's timers fire as soon as nothing else runs, its clock with them.
    driver.execute_cdp_cmd('Emulation.setVirtualTimePolicy', {'policy': 'advance'})
    js(HELPERS)
    first_paint()
    presents_what_the_view_says('at load')
    heard_and_pressed()
    click('Chq')
    wait("T.view('Chq').v.checked === 1", 'Quickplay is ticked')
    click('CDgo')
    presents_what_the_view_says('after Start')
    kick()

    click('CDhelp')
    wait("T.message() === 'Free Quorvel'", 'Help opens its message box')
    assert 'Keypad' in js("document.getElementById('message-text').textContent"), 'Help'
    shot('web-help.png')
    time_holds_under_the_box()
    # Where no page can be opened (a blocked pop-up), the game's own message says so.
    js('window.realOpen = window.open, window.open = () => null')
    click('Command1')
    wait("T.message() === 'Cannot find Browser:'", 'a page that cannot open says so')
    js("document.getElementById('message').close(), window.open = window.realOpen")

    # The match so far asked the network for nothing (the site's test: the policy refuses it).
    assert js("performance.getEntriesByType('resource').length") == 0, \
        js("performance.getEntriesByType('resource').map((r) => r.name)")

    click('CDend')
    wait("!document.getElementById('closing').hidden && document.getElementById('main').hidden",
         'Exit shows the closing window')
    shot('web-closing.png')
    presents_what_the_view_says('after Exit')
    click('LinksForm.Command1')
    WebDriverWait(driver, PATIENCE).until(lambda d: len(d.window_handles) == 2, 'a new tab')
    driver.switch_to.window(driver.window_handles[1])
    assert driver.current_url.startswith('https://quorvel.example.org'), driver.current_url
    driver.switch_to.window(driver.window_handles[0])
    key(Keys.ESCAPE)  # as its Exit does
    wait("!document.getElementById('ended').hidden && document.getElementById('closing').hidden",
         "Escape in the closing window ends the game and takes the window away")


if __name__ == '__main__':
    shots = sys.argv[2] if len(sys.argv) > 2 else '.'
    os.makedirs(shots, exist_ok=True)
    driver = chromium()
    try:
        play('file://' + os.path.abspath(sys.argv[1]))
    except AssertionError as failure:
        sys.exit(f'page_test: {failure}')
    finally:
        driver.quit()
    print('the page played: first paint, Tab, a kick, Help, the closing window')
