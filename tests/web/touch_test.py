#!/usr/bin/python3
"""The page on a phone: headless Chromium emulating a touch screen of 390 x 844 CSS pixels, held
upright and then turned. Every control within reach, none over another, no caption cut, no text
under 11 px, every target at least 32 px; a long press shows a control's tip; a whole match is
played by taps alone, its first half upright and its second turned, and turning loses nothing.
Screenshots go to SHOTS.   touch_test.py BUILD-WEB/quorvel.html [SHOTS]"""
import os
import sys

import page_test as page
from page_test import js, wait, shot

PORTRAIT = {'width': 390, 'height': 844, 'deviceScaleFactor': 3, 'mobile': True}
LANDSCAPE = dict(PORTRAIT, width=844, height=390)

# What breaks the rules for a small screen, read from the elements as the browser laid them out.
RULES = r'''(() => {
  const wrong = [], boxes = [];
  const pitch = /^(Grass|Goal\(|Player\(|Ball|CDdest\(|PicGame|TXgame\()/;
  const seen = (el) => !el.hidden && el.offsetParent !== null;
  const closing = !document.getElementById('closing').hidden;
  const text = [...Module.page.views.values()].filter((c) => c.v.closing === closing && seen(c.el))
    .map((c) => [c.name, c.el, c]).concat([['news', document.getElementById('news')],
                                           ['menu', document.getElementById('menu')]]);
  for (const [name, el, c] of text) {
    if (!seen(el)) continue;
    const r = el.getBoundingClientRect(), style = getComputedStyle(el);
    const words = c && c.v.kind === 'frame' ? '' : el.textContent.trim() || (el.value || '');
    if (words && parseFloat(style.fontSize) < 11) wrong.push(`${name}: text at ${style.fontSize}`);
    const inner = el.tagName === 'LABEL' ? el.lastChild : el;
    if (words && el.tagName !== 'INPUT' && inner.scrollWidth > inner.clientWidth + 1)
      wrong.push(`${name}: "${words}" cut`);
    const target = c ? c.v.focusable || c.v.role === 'button' : name === 'menu';
    if (target && (r.width < 32 || r.height < 32))
      wrong.push(`${name}: a target of ${r.width} x ${r.height}`);
    if (r.right > innerWidth + 0.5 || r.bottom > innerHeight + 0.5 && el.closest('#panel') === null)
      wrong.push(`${name}: off the screen`);
    const top = !c || !c.v.parent;
    if (top && !pitch.test(name) || /^CDdest\(/.test(name)) boxes.push([name, r, el.parentNode]);
  }
  for (let i = 0; i < boxes.length; i++)
    for (let k = i + 1; k < boxes.length; k++) {
      const [a, p, ha] = boxes[i], [b, q, hb] = boxes[k];
      if (ha === hb && p.left < q.right && q.left < p.right && p.top < q.bottom && q.top < p.bottom)
        wrong.push(`${a} meets ${b}`);
    }
  return wrong;
})()'''


def cdp(command, arguments):
    return page.driver.execute_cdp_cmd(command, arguments)


def hold(name, held_ms):
    """A finger on control `name` (scrolled into the panel's view if need be) for `held_ms` of
    the page's time; false if it is no longer on show. The finger lands on the control itself:
    nothing covers it."""
    at = js("(() => { const el = T.el(arguments[0]); if (!T.shown(arguments[0])) return 'gone';"
            " el.scrollIntoView({block: 'nearest'});"
            " const r = el.getBoundingClientRect(), x = r.x + r.width / 2, y = r.y + r.height / 2;"
            " const hit = document.elementFromPoint(x, y);"
            " return hit && (el === hit || el.contains(hit)) ? [x, y] : null; })()", name)
    if at == 'gone':
        return False
    assert at, f'{name} is in view and uncovered, to be tapped'
    cdp('Emulation.setVirtualTimePolicy', {'policy': 'pause'})
    cdp('Input.dispatchTouchEvent', {'type': 'touchStart', 'touchPoints': [{'x': at[0], 'y': at[1]}]})
    if held_ms:
        cdp('Emulation.setVirtualTimePolicy', {'policy': 'advance', 'budget': held_ms})
        wait('!document.getElementById("tip").hidden', f'a long press on {name} shows its tip')
    cdp('Input.dispatchTouchEvent', {'type': 'touchEnd', 'touchPoints': []})
    cdp('Emulation.setVirtualTimePolicy', {'policy': 'advance'})
    return True


def tap(name):
    assert hold(name, 0), f'{name} is on show to be tapped'


def tap_if_shown(name):
    hold(name, 0)


def tap_menu():
    tap_id = "document.getElementById('menu')"
    x, y = js(f"(() => {{ const r = {tap_id}.getBoundingClientRect(); "
              "return [r.x + r.width / 2, r.y + r.height / 2]; })()")
    cdp('Input.dispatchTouchEvent', {'type': 'touchStart', 'touchPoints': [{'x': x, 'y': y}]})
    cdp('Input.dispatchTouchEvent', {'type': 'touchEnd', 'touchPoints': []})


def keeps_the_rules(moment):
    wrong = js(RULES)
    assert not wrong, f'{moment}: ' + '; '.join(wrong)


def pieces_painted(moment):
    wrong = js('T.misplaced()')
    assert not wrong, f'{moment}: not painted where the view puts them, upright: {wrong}'


def panel_keeps_the_rules(moment, name):
    tap_menu()
    wait("!document.getElementById('panel').hidden", 'the menu opens the panel')
    keeps_the_rules(f'{moment}, the panel open')
    shot(f'touch-{name}-panel.png')
    tap_menu()
    wait("document.getElementById('panel').hidden", 'and closes it')


def turn(metrics):
    cdp('Emulation.setDeviceMetricsOverride', metrics)
    wait(f'innerWidth === {metrics["width"]} && T.view("Grass").v.turned === '
         f'{"true" if metrics["height"] > metrics["width"] else "false"}', 'the page turns')


def play_until(clock):
    """Taps alone: the first flag offered, else the die (ignored while no roll is due)."""
    for _ in range(20000):
        now, flags = js("[T.text('TXtim'), T.flags()]")
        if now == clock:
            return
        tap_if_shown(f'CDdest({flags[0]})' if flags else 'Cdice')
    raise AssertionError(f'the clock never reached {clock}')


def play(url):
    page.driver.get(url)
    wait("document.body.classList.contains('ready')", 'the page starts')
    cdp('Emulation.setVirtualTimePolicy', {'policy': 'advance'})
    js(page.HELPERS)
    assert js("T.view('Grass').v.turned"), 'upright, the pitch is turned to fill the screen'
    keeps_the_rules('upright at load')
    pieces_painted('upright at load')
    shot('touch-portrait-load.png')
    panel_keeps_the_rules('upright', 'portrait')

    # The panel's controls answer taps; a long press tells what a tooltip tells, and no more.
    tap_menu()
    ticked = js("T.view('ChAuto').v.checked")
    hold('ChAuto', 800)
    assert js("document.getElementById('tip').textContent === T.view('ChAuto').v.tip"), 'tip'
    assert js("T.view('ChAuto').v.checked") == ticked, 'a long press ticks nothing'
    shot('touch-tip.png')
    tap('Chq')
    wait("T.view('Chq').v.checked === 1", 'a tap ticks Quickplay')
    tap_menu()
    wait("document.getElementById('panel').hidden", 'the panel closes')

    tap('CDgo')
    play_until('45:00')
    wait('T.flags().length > 0 || T.view("Cdice").v.enabled', 'the match goes on')
    keeps_the_rules('upright at half time')
    pieces_painted('upright at half time')
    shot('touch-portrait-halftime.png')

    # Turned, the page is laid out anew and nothing of the match is lost.
    before = js("['TXtim', 'Goals(1)', 'Goals(2)', 'Team(1)', 'Team(2)'].map(T.text)"
                ".concat([T.view('Chq').v.checked, T.players().length])")
    turn(LANDSCAPE)
    after = js("['TXtim', 'Goals(1)', 'Goals(2)', 'Team(1)', 'Team(2)'].map(T.text)"
               ".concat([T.view('Chq').v.checked, T.players().length])")
    assert before == after, f'turning lost something: {before} then {after}'
    keeps_the_rules('turned')
    shot('touch-landscape.png')
    panel_keeps_the_rules('turned', 'landscape')
    for _ in range(200):  # until flags are offered, to see them on the small screen
        if js('T.flags().length'):
            break
        tap('Cdice')
    keeps_the_rules('turned, flags offered')
    pieces_painted('turned, flags offered')
    shot('touch-landscape-flags.png')

    play_until('90:00')
    over = js("[T.shown('PicGame'), T.text('TXgame(1)'), T.text('news')]")
    assert over[:2] == [True, 'Over'] and 'Full time:' in over[2], f'full time: {over}'
    keeps_the_rules('turned at full time')
    shot('touch-landscape-fulltime.png')
    turn(PORTRAIT)
    keeps_the_rules('upright at full time')
    pieces_painted('upright at full time')
    shot('touch-portrait-fulltime.png')

    tap_menu()
    tap('CDend')
    wait("!document.getElementById('closing').hidden", 'a tap on Exit shows the closing window')
    keeps_the_rules('the closing window')
    shot('touch-closing.png')
    tap('LinksForm.CDend')
    wait("!document.getElementById('ended').hidden", "and a tap on its Exit ends the game")


if __name__ == '__main__':
    page.shots = sys.argv[2] if len(sys.argv) > 2 else '.'
    os.makedirs(page.shots, exist_ok=True)
    page.VIEWPORT = PORTRAIT
    page.driver = page.chromium()
    cdp('Emulation.setTouchEmulationEnabled', {'enabled': True, 'maxTouchPoints': 5})
    try:
        play('file://' + os.path.abspath(sys.argv[1]))
    except AssertionError as failure:
        sys.exit(f'touch_test: {failure}')
    finally:
        page.driver.quit()
    print('the page on a phone: the rules of a small screen upright and turned, a long press, '
          'a whole match by taps')
