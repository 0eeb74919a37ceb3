#!/usr/bin/env python3
"""The page in a real browser: headless Chromium opens quorvel.html from a file:// address with no
network, sees the pitch and both teams, ticks Quickplay, presses Start, rolls with the keypad's 5,
clicks a flag and sees the ball reach a receiver, opens Help, meets the game's message for a page
that cannot open, presses Exit, sees the closing window, opens the web site in a new tab and
leaves. Screenshots of each step go to --shots.

   page_test.py BUILD-WEB/quorvel.html [--shots DIR] [--scale 2]"""
import argparse
import os
import shutil
import sys
import time

from devtools import Browser

WIDTH, HEIGHT = 1248, 768  # the main window's natural size in CSS pixels

# What the test reads of the page: where a control is, and what it shows.
HELPERS = r'''
  window.T = {
    view: (name) => Module.page.views.get(name),
    rect: (name) => { const r = T.view(name).el.getBoundingClientRect();
                      return [r.x, r.y, r.width, r.height]; },
    shown: (name) => { const v = T.view(name); return !v.el.hidden && v.el.offsetParent !== null; },
    // The colour a picture's canvas has at (x, y), fractions of its size: [r, g, b, alpha].
    colour: (name, x, y) => { const c = T.view(name).canvas;
                              return Array.from(c.getContext('2d').getImageData(
                                Math.floor(c.width * x), Math.floor(c.height * y), 1, 1).data); },
    flags: () => [...Array(8).keys()].map((d) => `CDdest(${d})`).filter(T.shown),
    players: () => [...Array(22).keys()].map((i) => `Player(${i + 1})`).filter(T.shown),
  };
  true'''


def check(condition, what):
    if not condition:
        raise AssertionError(what)


def centre(tab, name):
    x, y, w, h = tab.evaluate(f'T.rect({name!r})')
    return x + w / 2, y + h / 2


def click(tab, name):
    check(tab.evaluate(f'T.shown({name!r})'), f'{name} is on show to be clicked')
    tab.click(*centre(tab, name))


def first_paint(tab):
    for x, y in ((0.3, 0.3), (0.7, 0.6)):
        r, g, b, a = tab.evaluate(f"T.colour('Grass', {x}, {y})")
        check(a == 255 and g > r + 40 and g > b + 40, f'the pitch is green: {r, g, b, a}')
    players = tab.evaluate('T.players()')
    check(len(players) == 22, f'22 players on show, not {len(players)}')
    painted = tab.evaluate('T.players().map((p) => T.colour(p, 0.5, 0.5)[3])')
    check(all(alpha == 255 for alpha in painted), f'every player is painted: {painted}')
    shirts = tab.evaluate("[T.view('Player(1)').state.back, T.view('Player(12)').state.back]")
    check(shirts[0] != shirts[1], f'the two teams wear different colours: {shirts}')
    names = tab.evaluate("[1, 2].map((s) => T.view(`Team(${s})`).el.value)")
    check(all(names), f'both teams have a name on show: {names}')


def kick(tab, shot):
    # Roll with the keypad's 5 until the flags are offered (the walk or a contest may be on).
    end = time.monotonic() + 60
    while not tab.evaluate('T.flags().length > 0'):
        check(time.monotonic() < end, 'the keypad 5 rolls the die and flags are offered')
        tab.key('5', 'Numpad5')
        time.sleep(0.5)
    shot('web-flags.png')
    flag = tab.evaluate('T.flags()[0]')
    ball = tab.evaluate("T.view('Ball').state.at")
    click(tab, flag)
    tab.wait_for('T.flags().length === 0', 'the flags go once one is clicked', 10)
    # The flight ends when the die is ready for the next roll: white again (black once rolled).
    tab.wait_for("T.view('Cdice').state.back === '#ffffff'", 'the kick ends, the die ready', 30)
    check(tab.evaluate("T.view('Ball').state.at") != ball, f'the ball left {ball}')
    bx, by = centre(tab, 'Ball')
    square = tab.evaluate("T.rect('Grass')[2]") / 16
    nearest = min(((px - bx) ** 2 + (py - by) ** 2) ** 0.5
                  for px, py in (centre(tab, p) for p in tab.evaluate('T.players()')))
    check(nearest < square, f'a player receives the ball: the nearest is {nearest:.0f} px away')
    shot('web-kick.png')


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('page')
    parser.add_argument('--shots', default='.')
    parser.add_argument('--scale', type=float, default=1)
    parser.add_argument('--chromium', default=shutil.which('chromium') or 'chromium')
    args = parser.parse_args()
    os.makedirs(args.shots, exist_ok=True)

    browser = Browser(args.chromium, WIDTH, HEIGHT, args.scale)
    try:
        tab = browser.open('file://' + os.path.abspath(args.page))
        tab.wait_for("document.body && document.body.classList.contains('ready')", 'the page starts')
        tab.evaluate(HELPERS)

        def shot(name):
            tab.screenshot(os.path.join(args.shots, name))

        first_paint(tab)
        shot('web-load.png')

        click(tab, 'Chq')
        tab.wait_for("T.view('Chq').state.value === 1", 'Quickplay is ticked', 5)
        click(tab, 'CDgo')
        kick(tab, shot)

        click(tab, 'CDhelp')
        tab.wait_for("document.getElementById('message').open", 'Help opens a message box', 5)
        title, text = tab.evaluate("['message-title', 'message-text'].map("
                                   "(id) => document.getElementById(id).textContent)")
        check(title == 'Free Quorvel' and 'Keypad' in text, f'Help tells how to play: {title!r}')
        shot('web-help.png')
        ok = tab.evaluate("(() => { const r = document.querySelector('#message button')"
                          ".getBoundingClientRect(); return [r.x + r.width / 2, r.y + r.height / 2]; })()")
        tab.click(*ok)
        tab.wait_for("!document.getElementById('message').open", 'OK closes the message box', 5)

        # Where no page can be opened (a blocked pop-up), the game's own message says so.
        tab.evaluate('window.realOpen = window.open; window.open = () => null; true')
        click(tab, 'Command1')
        tab.wait_for("document.getElementById('message-title').textContent === "
                     "'Cannot find Browser:'", 'a page that cannot open says so', 5)
        tab.evaluate("document.getElementById('message').close(); window.open = window.realOpen; true")
        tab.wait_for("!document.getElementById('message').open", 'the message box closes', 5)

        click(tab, 'CDend')
        tab.wait_for("!document.getElementById('closing').hidden && "
                     "document.getElementById('main').hidden", 'Exit shows the closing window', 5)
        shot('web-closing.png')

        click(tab, 'LinksForm.Command1')
        end = time.monotonic() + 10
        while not any(method in ('Target.targetCreated', 'Target.targetInfoChanged') and
                      params['targetInfo']['url'].startswith('https://quorvel.example.org')
                      for method, params in browser.events):
            check(time.monotonic() < end, 'the web site opens in a new tab')
            tab.evaluate('true')  # lets the browser's events arrive
            time.sleep(0.1)
        click(tab, 'LinksForm.CDend')
        tab.wait_for("!document.getElementById('ended').hidden", 'Exit ends the game', 5)
    finally:
        browser.close()
    print('the page played: first paint, Start, roll, kick, Help, Exit, the closing window')


if __name__ == '__main__':
    try:
        main()
    except AssertionError as failure:
        sys.exit(f'page_test: {failure}')
