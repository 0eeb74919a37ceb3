#!/usr/bin/python3
"""The page's costs in headless Chromium, measured, never asserted:

  first paint  the page's first contentful paint against a bare page whose one canvas shows the
               same pitch through the same painter (no WebAssembly), PAIRS interleaved loads;
  processor    the renderer's and the GPU process's processor time, for SECONDS of each phase
               (before Start, the ball idling at its owner's feet, kicks played with the keypad),
               against a bare canvas page that moves one picture of the ball's size at the same
               rate (every 15 ms), repainting only the rectangle it left and the one it entered:
               at the same place for the idling, along the pitch for the kicks. Page and bare
               page alternate, PAIRS of each, in one tab; the medians and their ratio are printed,
               with the page's wake-ups a second and its pace (virtual ms a wall ms).
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


def bare_page(path, pitch, ball, size, ball_at, painter):
    """One canvas showing the pitch, painted by web/painter.js from the page's own description;
    with `?idle` or `?flight` a ball's picture moves on it every 15 ms, each move repainting the
    rectangle it left and the one it entered from a copy of the pitch. It keeps the wall clock's
    pace as the page does: each wake is due 15 ms after the last was due (a late one skips what
    it missed), not 15 ms after it ran, which on a busy machine would move it less often."""
    with open(painter) as f:
        script = f.read()
    w, h = size
    bx, by, bw, bh = ball_at
    with open(path, 'w') as out:
        out.write(f'''<!doctype html><html><head><meta charset="utf-8"><title>bare</title></head>
<body style="margin:0;background:#dfe6da"><canvas id="c" style="width:{w}px;height:{h}px"></canvas>
<script>{script}
const c = document.getElementById('c'), ratio = devicePixelRatio;
c.width = Math.round({w} * ratio); c.height = Math.round({h} * ratio);
paintPicture(c, {pitch}, ratio);
const under = document.createElement('canvas'), ball = document.createElement('canvas');
under.width = c.width; under.height = c.height; under.getContext('2d').drawImage(c, 0, 0);
ball.width = Math.round({bw} * ratio); ball.height = Math.round({bh} * ratio);
paintPicture(ball, {ball}, ratio);
const ctx = c.getContext('2d'), moving = location.search === '?flight';
let x = {bx}, y = {by}, step = 0, due = 0;
window.wakeups = 0;
function tick() {{
  window.wakeups++;
  const r = [Math.floor(x * ratio), Math.floor(y * ratio), ball.width + 1, ball.height + 1];
  if (moving) {{ step = (step + 1) % 60; x = {bx} + (step - 30) * {w} / 120; }}
  ctx.drawImage(under, ...r, ...r);
  ctx.drawImage(ball, Math.round(x * ratio), Math.round(y * ratio));
  const now = performance.now();  // a timer may fire a little early: this was the wake due
  do due += 15; while (due <= now);
  setTimeout(tick, due - now);
}}
if (location.search) {{ due = performance.now() + 15; setTimeout(tick, 15); }}
</script></body></html>''')


def rounds(runs):
    """Each round's ratio, page against the bare page run after it, from lowest to highest."""
    def cost(r):
        return r['renderer'] + r['gpu']
    ratios = sorted(cost(p) / cost(b) if cost(b) > 0 else float('inf')
                    for p, b in zip(runs['page'], runs['bare']))
    return ' '.join(f'{r:.2f}' for r in ratios)


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


def processes(root):
    """Processor seconds used so far by Chromium's renderers and by its GPU process, and the
    pids of the processes descended from `root`."""
    stats = {}
    for pid in filter(str.isdigit, os.listdir('/proc')):
        try:
            with open(f'/proc/{pid}/stat') as f:
                fields = f.read().rsplit(')', 1)[1].split()
            with open(f'/proc/{pid}/cmdline', 'rb') as f:
                kind = f.read()  # Chromium writes its own title: '... --type=renderer ...'
        except OSError:
            continue
        ticks = int(fields[11]) + int(fields[12])  # utime + stime
        stats[int(pid)] = (int(fields[1]), ticks, kind)
    family = {root}
    for _ in range(5):  # chromium-driver, the browser, its zygotes, renderers and helpers
        family |= {pid for pid, (ppid, _, _) in stats.items() if ppid in family}
    used = {'renderer': 0, 'gpu': 0}
    for pid in family & stats.keys():
        kind = stats[pid][2]
        if b'--type=renderer' in kind:
            used['renderer'] += stats[pid][1]
        elif b'--type=gpu-process' in kind:
            used['gpu'] += stats[pid][1]
    return {k: v / os.sysconf('SC_CLK_TCK') for k, v in used.items()}


def watch(driver, seconds, wakeups, act=None):
    """Wake-ups a second, virtual ms per wall ms (None for the bare page), and the renderer's
    and the GPU process's shares of one processor."""
    counts = f'return [{wakeups}, window.Module ? Module.virtualTime() : 0, performance.now()]'
    root = driver.service.process.pid
    start = driver.execute_script(counts)
    before = processes(root)
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if act:
            act()
        time.sleep(0.25)
    stop = driver.execute_script(counts)
    after = processes(root)
    wall = stop[2] - start[2]
    return {'wakeups': (stop[0] - start[0]) * 1000 / wall,
            'pace': (stop[1] - start[1]) / wall,
            'renderer': (after['renderer'] - before['renderer']) * 1000 / wall,
            'gpu': (after['gpu'] - before['gpu']) * 1000 / wall}


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
        # The ball where it rests at kick-off, in the pitch's pixels.
        ball_at = driver.execute_script(
            "const b = Module.page.views.get('Ball').v.rect, g = Module.page.views.get('Grass').v.rect; "
            "return [b[0] - g[0], b[1] - g[1], b[2], b[3]];")
        ball = driver.execute_script(
            f"return Module.drawing('Ball', {ball_at[2]}, {ball_at[3]}, false, false, false)")
        bare = os.path.join(scratch, 'bare.html')
        bare_page(bare, json.dumps(json.loads(drawing)), json.dumps(json.loads(ball)), size,
                  ball_at, painter)

        times = {'page': [], 'bare': []}
        for _ in range(args.pairs):
            times['page'].append(first_paint(driver, page))
            times['bare'].append(first_paint(driver, 'file://' + bare))
        for name, ms in times.items():
            print(f'first contentful paint, {name}: median {statistics.median(ms):.1f} ms '
                  f'({min(ms):.1f} to {max(ms):.1f})')
        print(f'ratio: {statistics.median(times["page"]) / statistics.median(times["bare"]):.2f}')

        start = ("Module.page.views.get('Chq').el.firstChild.click(); "
                 "Module.page.views.get('CDgo').el.click();")

        def kick():
            # Roll with the keypad's 5, then click the first flag offered, as a person would.
            ActionChains(driver).send_keys(Keys.NUMPAD5).perform()
            driver.execute_script("const flag = [...Array(8).keys()].map((d) => Module.page"
                                  ".views.get(`CDdest(${d})`).el).find((el) => !el.hidden); "
                                  "if (flag) flag.click();")

        def game(phase):
            driver.get(page)
            WebDriverWait(driver, 60).until(lambda d: d.execute_script(READY))
            if phase != 'before Start':
                driver.execute_script(start)
                time.sleep(1.5)  # the walk onto the pitch
            act = kick if phase == 'through kicks' else None
            return watch(driver, args.seconds, 'Module.page.wakeups', act)

        def floor(phase):
            query = {'before Start': '', "the ball at its owner's feet": '?idle',
                     'through kicks': '?flight'}[phase]
            driver.get('file://' + bare + query)
            time.sleep(0.5)
            return watch(driver, args.seconds, 'window.wakeups')

        print(f'\nprocessor, % of one core: median of {args.pairs} alternating runs of '
              f'{args.seconds:g} s each')
        print(f'{"phase":30} {"renderer":>17} {"GPU process":>17} {"ratio":>6} '
              f'{"wake-ups/s":>11} {"pace":>6}  each round')
        for phase in ('before Start', "the ball at its owner's feet", 'through kicks'):
            runs = {'page': [], 'bare': []}
            for _ in range(args.pairs):
                runs['page'].append(game(phase))
                runs['bare'].append(floor(phase))
            m = {who: {k: statistics.median(r[k] for r in rs) for k in rs[0]}
                 for who, rs in runs.items()}
            page_cost = m['page']['renderer'] + m['page']['gpu']
            bare_cost = m['bare']['renderer'] + m['bare']['gpu']
            ratio = page_cost / bare_cost if bare_cost > 0 else float('inf')
            print(f'{phase:30} {m["page"]["renderer"] * 100:6.1f} / {m["bare"]["renderer"] * 100:5.1f} '
                  f'{m["page"]["gpu"] * 100:8.1f} / {m["bare"]["gpu"] * 100:5.1f} {ratio:6.2f} '
                  f'{m["page"]["wakeups"]:5.1f} / {m["bare"]["wakeups"]:4.1f} '
                  f'{m["page"]["pace"]:6.3f}  {rounds(runs)}')
        print('(page / bare page; the ratio is of the two processes together; each round is a\n'
              ' page run against the bare page run after it, lowest to highest)')
    finally:
        driver.quit()
        shutil.rmtree(scratch, ignore_errors=True)


if __name__ == '__main__':
    main()
