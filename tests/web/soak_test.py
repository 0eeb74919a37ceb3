#!/usr/bin/python3
"""A soak of the page in headless Chromium: random taps, clicks, keys, resizes and turns, from
a seed. After each input no script or console error, and the page still answers; whenever the
game ends and after the last input, the game's whole state must be what the core reaches
replaying the page's journal under Node, with no browser. A journal that parts is kept in OUT.
  soak_test.py BUILD-WEB/quorvel.html [OUT] [--inputs N] [--seed S]"""
import argparse
import json
import os
import random
import subprocess
import sys

from selenium.common.exceptions import WebDriverException
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys

import page_test as page
from page_test import js, wait
from touch_test import cdp, PORTRAIT, LANDSCAPE

PHONES = [PORTRAIT, LANDSCAPE, dict(PORTRAIT, width=360, height=640, deviceScaleFactor=2),
          dict(PORTRAIT, width=768, height=1024, deviceScaleFactor=2)]
DESKTOPS = [page.VIEWPORT, dict(page.VIEWPORT, width=800, height=600),
            dict(page.VIEWPORT, width=1920, height=1080, deviceScaleFactor=2)]
# The keypad's roll and flags most often, so that matches go on; then what else a person types.
KEYS = list('5555123456789-+ aZ') + [Keys.TAB, Keys.ARROW_UP, Keys.ARROW_DOWN, Keys.ARROW_LEFT,
                                     Keys.ARROW_RIGHT, Keys.ENTER, Keys.ESCAPE, Keys.BACKSPACE]
# Before the page's own script: keep a journal, note every error, and let every other page
# asked for open or fail in turn.
WATCH = r'''window.quorvelJournal = true;
window.soak = { errors: [], opened: false };
const note = (what) => soak.errors.push(what);
addEventListener('error', (e) => note(`error: ${e.message} at ${e.filename}:${e.lineno}`));
addEventListener('unhandledrejection', (e) => note(`rejected: ${e.reason}`));
addEventListener('securitypolicyviolation',
                 (e) => note(`refused: ${e.violatedDirective} ${e.blockedURI.slice(0, 60)}`));
const said = console.error.bind(console);
console.error = (...words) => { note(`console: ${words.join(' ')}`); said(...words); };
window.open = () => (soak.opened = !soak.opened) ? {} : null;'''
# The errors since the last look, whether the game ended, the screen, and what a finger or the
# mouse may hit.
LOOK = r'''return [soak.errors.splice(0), Boolean(Module.page.ended), typeof Module.virtualTime(),
  [innerWidth, innerHeight],
  [...Module.page.views.values()].map((c) => c.el)
    .concat([document.getElementById('menu'), document.querySelector('#message button')])
    .filter((el) => !el.hidden && el.offsetParent !== null).map((el) => el.getBoundingClientRect())
    .map((r) => [r.x, r.y, r.width, r.height]).filter((r) => r[2] > 0 && r[3] > 0)]'''


def replayed(build, out):
    """The page's state and the replay's of its journal: the first value that differs, or None."""
    journal, dump = js('[Module.journal(), Module.dump()]')
    path = os.path.join(out, 'soak-journal.txt')
    with open(path, 'w') as f:
        f.write(journal)
    run = subprocess.run(['node', os.path.join(build, 'tests/web/quorvel_replay.js'), path],
                         capture_output=True, text=True, check=False)
    if run.returncode != 0:
        return f'the replay failed: {run.stderr.strip()}'
    mine, core = json.loads(dump), json.loads(run.stdout)
    parted = [k for k in dict.fromkeys([*mine, *core]) if mine.get(k) != core.get(k)]
    if parted:
        return f'{len(parted)} values differ, the first {parted[0]}: page ' \
               f'{mine.get(parted[0])!r}, replay {core.get(parted[0])!r}; journal in {path}'
    os.remove(path)
    return None


def show_on(device):
    cdp('Emulation.setTouchEmulationEnabled', {'enabled': device in PHONES, 'maxTouchPoints': 5})
    cdp('Emulation.setDeviceMetricsOverride', device)


def one_input(rng, screen, targets, device):
    """A random input: mostly a tap or click on something on show, else anywhere; a key; now
    and then a new window size or the phone turned."""
    roll = rng.random()
    if roll < 0.04:
        device = rng.choice(PHONES + DESKTOPS)
        show_on(device)
        return device, f'screen {device["width"]} x {device["height"]}'
    if roll < 0.45:
        key = rng.choice(KEYS)
        ActionChains(page.driver).send_keys(key).perform()
        return device, f'key {key!r}'
    width, height = screen
    x, y, w, h = rng.choice(targets) if targets and rng.random() < 0.9 else [0, 0, width, height]
    x, y = min(x + rng.random() * w, width - 1), min(y + rng.random() * h, height - 1)
    if device in PHONES:
        cdp('Input.dispatchTouchEvent', {'type': 'touchStart', 'touchPoints': [{'x': x, 'y': y}]})
        cdp('Input.dispatchTouchEvent', {'type': 'touchEnd', 'touchPoints': []})
    else:
        for kind in ('mousePressed', 'mouseReleased'):
            cdp('Input.dispatchMouseEvent', {'type': kind, 'x': x, 'y': y, 'button': 'left',
                                            'clickCount': 1})
    return device, f'{"tap" if device in PHONES else "click"} at {x:.0f}, {y:.0f}'


def load(url):
    page.driver.get(url)
    wait("document.body.classList.contains('ready')", 'the page starts')
    # Virtual time: the page's timers fire as soon as nothing else runs, its clock with them.
    cdp('Emulation.setVirtualTimePolicy', {'policy': 'advance'})


def soak(html, out, inputs, seed):
    rng, url, build = random.Random(seed), 'file://' + os.path.abspath(html), os.path.dirname(html)
    cdp('Page.addScriptToEvaluateOnNewDocument', {'source': WATCH})
    device, opened, done, ended, last = page.VIEWPORT, 0, 0, True, 'nothing'
    while True:
        try:
            if ended:
                opened += 1
                load(url)
                last = 'a new page'
            else:
                device, last = one_input(rng, screen, targets, device)
                done += 1
                if done % 1000 == 0:
                    print(f'{done} inputs, {opened} pages', flush=True)  # a long run's progress
            errors, ended, answer, screen, targets = page.driver.execute_script(LOOK)
        except WebDriverException as e:
            raise AssertionError(f'at input {done + 1}, after {last}, the page does not answer: '
                                 f'{e.msg}')
        assert not errors and answer == 'number', f'after input {done} ({last}): {errors}'
        if ended or done == inputs:
            parted = replayed(build, out)
            assert not parted, f'after input {done}, page {opened}: {parted}'
        if done == inputs:
            return opened


if __name__ == '__main__':
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument('html')
    options.add_argument('out', nargs='?', default='.')
    options.add_argument('--inputs', type=int, default=300)
    options.add_argument('--seed', type=int, default=1)
    args = options.parse_args()
    os.makedirs(args.out, exist_ok=True)
    page.driver = page.chromium()
    page.driver.set_script_timeout(30)
    try:
        page.driver.get('about:blank')
        sessions = soak(args.html, args.out, args.inputs, args.seed)
    except AssertionError as failure:
        sys.exit(f'soak_test: seed {args.seed}: {failure}')
    finally:
        page.driver.quit()
    print(f'the page took {args.inputs} random inputs (seed {args.seed}), opened {sessions} '
          'times, with no error, and ended each time where the replay of its journal did')
