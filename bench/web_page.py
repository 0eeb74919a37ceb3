#!/usr/bin/env python3
"""The page's costs in headless Chromium, measured, never asserted:

  first paint  the page's first contentful paint against a bare page whose one canvas shows the
               same pitch through the same painter (no WebAssembly), PAIRS interleaved loads;
  wake-ups     how often the page wakes for the game's timers, its pace (virtual ms per wall ms)
               and Chromium's busy time, for SECONDS before Start, with the ball idling at its
               owner's feet, and through kicks played with the keypad.

   bench/web_page.py BUILD-WEB/quorvel.html [--pairs 9] [--seconds 10]"""
import argparse
import json
import os
import shutil
import statistics
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'web'))
from devtools import Browser  # noqa: E402

WIDTH, HEIGHT = 1248, 768
READY = "document.body && document.body.classList.contains('ready')"
FIRST_PAINT = ("new Promise((done) => new PerformanceObserver((seen, o) => { o.disconnect(); "
               "done(seen.getEntries()[0].startTime); }).observe({type: 'paint', buffered: true}))")


def bare_page(path, drawing, size, painter):
    """One canvas showing the pitch, painted by web/painter.js from the page's own description."""
    with open(painter) as f:
        script = f.read()
    w, h = size
    with open(path, 'w') as out:
        out.write(f'''<!doctype html><html><head><meta charset="utf-8"><title>bare</title></head>
<body style="margin:0;background:#dfe6da"><canvas id="c" style="width:{w}px;height:{h}px"></canvas>
<script>{script}
const c = document.getElementById('c'), ratio = devicePixelRatio;
c.width = Math.round({w} * ratio); c.height = Math.round({h} * ratio);
paintPicture(c, {drawing}, ratio);
</script></body></html>''')


def first_paint(browser, url):
    tab = browser.open('about:blank')
    tab.send('Page.navigate', {'url': url})
    time.sleep(0.05)
    ms = tab.evaluate(FIRST_PAINT)
    tab.send('Page.close')
    return ms


def busy(root):
    """Processor seconds used so far by Chromium: process `root` and all its children."""
    stats = {}
    for pid in filter(str.isdigit, os.listdir('/proc')):
        try:
            with open(f'/proc/{pid}/stat') as f:
                fields = f.read().rsplit(')', 1)[1].split()
        except OSError:
            continue
        stats[int(pid)] = (int(fields[1]), int(fields[11]) + int(fields[12]))  # ppid, utime+stime
    family, ticks = {root}, 0
    for _ in range(4):  # the browser, its zygotes, their renderers and helpers
        family |= {pid for pid, (ppid, _) in stats.items() if ppid in family}
    ticks = sum(stats[pid][1] for pid in family if pid in stats)
    return ticks / os.sysconf('SC_CLK_TCK')


def watch(tab, seconds, act=None):
    """Wake-ups a second, virtual ms per wall ms, and Chromium's share of one processor."""
    start = tab.evaluate('[Module.page.wakeups, Module.virtualTime(), performance.now()]')
    task = busy(tab.browser.process.pid)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if act:
            act()
        time.sleep(0.25)
    stop = tab.evaluate('[Module.page.wakeups, Module.virtualTime(), performance.now()]')
    wall = stop[2] - start[2]
    return ((stop[0] - start[0]) * 1000 / wall, (stop[1] - start[1]) / wall,
            (busy(tab.browser.process.pid) - task) * 1000 / wall)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('page')
    parser.add_argument('--pairs', type=int, default=9)
    parser.add_argument('--seconds', type=float, default=10)
    parser.add_argument('--chromium', default=shutil.which('chromium') or 'chromium')
    args = parser.parse_args()
    page = 'file://' + os.path.abspath(args.page)
    painter = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'web', 'painter.js')

    browser = Browser(args.chromium, WIDTH, HEIGHT)
    scratch = tempfile.mkdtemp()
    try:
        tab = browser.open(page)
        tab.wait_for(READY, 'the page starts')
        size = tab.evaluate("(() => { const r = Module.page.views.get('Grass').el"
                            ".getBoundingClientRect(); return [r.width, r.height]; })()")
        drawing = tab.evaluate(f"Module.drawing('Grass', {size[0]}, {size[1]}, false, false, false)")
        bare = os.path.join(scratch, 'bare.html')
        bare_page(bare, json.dumps(json.loads(drawing)), size, painter)

        times = {'page': [], 'bare': []}
        for _ in range(args.pairs):
            times['page'].append(first_paint(browser, page))
            times['bare'].append(first_paint(browser, 'file://' + bare))
        for name, ms in times.items():
            print(f'first contentful paint, {name}: median {statistics.median(ms):.1f} ms '
                  f'({min(ms):.1f} to {max(ms):.1f})')
        print(f'ratio: {statistics.median(times["page"]) / statistics.median(times["bare"]):.2f}')

        def report(what, r):
            print(f'{what}: {r[0]:.1f} wake-ups a second, pace {r[1]:.4f} virtual ms a wall ms, '
                  f'processor {r[2] * 100:.1f} %')
        report('before Start', watch(tab, args.seconds))
        tab.evaluate("Module.page.views.get('Chq').el.firstChild.click(); "
                     "Module.page.views.get('CDgo').el.click(); 0")
        time.sleep(1)
        report("the ball at its owner's feet", watch(tab, args.seconds))

        def kick():
            # Roll with the keypad's 5, then click the first flag offered, as a person would.
            tab.key('5', 'Numpad5')
            tab.evaluate("(() => { const flag = [...Array(8).keys()].map((d) => "
                         "Module.page.views.get(`CDdest(${d})`).el).find((el) => !el.hidden); "
                         "if (flag) flag.click(); return 0; })()")
        report('through kicks', watch(tab, args.seconds, kick))
    finally:
        browser.close()
        shutil.rmtree(scratch, ignore_errors=True)


if __name__ == '__main__':
    main()
