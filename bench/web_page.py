#!/usr/bin/python3
"""The page's costs in headless Chromium, measured, never asserted:

  first paint  the page's first contentful paint against a bare page whose one canvas shows the
               same pitch through the same painter (no WebAssembly), PAIRS interleaved loads;
  wake-ups     how often the page wakes for the game's timers, its pace (virtual ms per wall ms)
               and Chromium's busy time, for SECONDS before Start, with the ball idling at its
               owner's feet, and through kicks played with the keypad.
Chromium is driven as the page's test drives it (tests/web/page_test.py), on the wall clock.

   bench/web_page.py BUILD-WEB/quorvel.html [--pairs 9] [--seconds 10]"""
import argparse
import json
import os
import shutil
import statistics
import sys
import tempfile
import time

from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'tests', 'web'))
from page_test import VIEWPORT, chromium  # noqa: E402

READY = "return document.body && document.body.classList.contains('ready')"
FIRST_PAINT = ("return new Promise((done) => new PerformanceObserver((seen, o) => { "
               "o.disconnect(); done(seen.getEntries()[0].startTime); })"
               ".observe({type: 'paint', buffered: true}))")


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


def first_paint(driver, url):
    """In a new tab, closed after: the page loaded afresh, not from the first tab's memory."""
    home = driver.current_window_handle
    driver.switch_to.new_window('tab')
    driver.execute_cdp_cmd('Emulation.setDeviceMetricsOverride', VIEWPORT)
    driver.get(url)
    ms = driver.execute_script(FIRST_PAINT)
    driver.close()
    driver.switch_to.window(home)
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
    for _ in range(5):  # chromium-driver, the browser, its zygotes, renderers and helpers
        family |= {pid for pid, (ppid, _) in stats.items() if ppid in family}
    ticks = sum(stats[pid][1] for pid in family if pid in stats)
    return ticks / os.sysconf('SC_CLK_TCK')


def watch(driver, seconds, act=None):
    """Wake-ups a second, virtual ms per wall ms, and Chromium's share of one processor."""
    counts = 'return [Module.page.wakeups, Module.virtualTime(), performance.now()]'
    root = driver.service.process.pid
    start = driver.execute_script(counts)
    task = busy(root)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if act:
            act()
        time.sleep(0.25)
    stop = driver.execute_script(counts)
    wall = stop[2] - start[2]
    return ((stop[0] - start[0]) * 1000 / wall, (stop[1] - start[1]) / wall,
            (busy(root) - task) * 1000 / wall)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument('page')
    parser.add_argument('--pairs', type=int, default=9)
    parser.add_argument('--seconds', type=float, default=10)
    args = parser.parse_args()
    page = 'file://' + os.path.abspath(args.page)
    painter = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..', 'web', 'painter.js')

    driver = chromium()
    scratch = tempfile.mkdtemp()
    try:
        driver.get(page)
        WebDriverWait(driver, 60).until(lambda d: d.execute_script(READY))
        size = driver.execute_script("const r = Module.page.views.get('Grass').el"
                                     ".getBoundingClientRect(); return [r.width, r.height];")
        drawing = driver.execute_script(
            f"return Module.drawing('Grass', {size[0]}, {size[1]}, false, false, false)")
        bare = os.path.join(scratch, 'bare.html')
        bare_page(bare, json.dumps(json.loads(drawing)), size, painter)

        times = {'page': [], 'bare': []}
        for _ in range(args.pairs):
            times['page'].append(first_paint(driver, page))
            times['bare'].append(first_paint(driver, 'file://' + bare))
        for name, ms in times.items():
            print(f'first contentful paint, {name}: median {statistics.median(ms):.1f} ms '
                  f'({min(ms):.1f} to {max(ms):.1f})')
        print(f'ratio: {statistics.median(times["page"]) / statistics.median(times["bare"]):.2f}')

        def report(what, r):
            print(f'{what}: {r[0]:.1f} wake-ups a second, pace {r[1]:.4f} virtual ms a wall ms, '
                  f'processor {r[2] * 100:.1f} %')
        report('before Start', watch(driver, args.seconds))
        driver.execute_script("Module.page.views.get('Chq').el.firstChild.click(); "
                              "Module.page.views.get('CDgo').el.click();")
        time.sleep(1)
        report("the ball at its owner's feet", watch(driver, args.seconds))

        def kick():
            # Roll with the keypad's 5, then click the first flag offered, as a person would.
            ActionChains(driver).send_keys(Keys.NUMPAD5).perform()
            driver.execute_script("const flag = [...Array(8).keys()].map((d) => Module.page"
                                  ".views.get(`CDdest(${d})`).el).find((el) => !el.hidden); "
                                  "if (flag) flag.click();")
        report('through kicks', watch(driver, args.seconds, kick))
    finally:
        driver.quit()
        shutil.rmtree(scratch, ignore_errors=True)


if __name__ == '__main__':
    main()
