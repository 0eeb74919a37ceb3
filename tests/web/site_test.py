#!/usr/bin/python3
"""The site (build-web/site/) served as any static host serves it, here Python's http.server on
localhost, in headless Chromium: the browser finds nothing in the way of installing it, its
service worker is active after the first load, and with the network cut and the server gone a
reload still opens the game and plays a kick. The policy refuses a connection the page would
try.   site_test.py BUILD-WEB/site [SHOTS]"""
import os
import subprocess
import sys
import time

from selenium.webdriver.support.ui import WebDriverWait

import page_test
from page_test import HELPERS, PATIENCE, chromium, click, js, wait

READY = "return document.body && document.body.classList.contains('ready')"


def opened():
    WebDriverWait(driver, PATIENCE, 0.05).until(lambda d: d.execute_script(READY), 'the game opens')
    driver.execute_script(HELPERS)


def kick_plays():
    """A roll and a click on the first flag offered: the ball leaves for it."""
    click('Chq')
    click('CDgo')
    for _ in range(400):
        if js('T.flags().length'):
            break
        if js("T.shown('Cdice') && T.view('Cdice').v.enabled"):
            click('Cdice')
        time.sleep(0.05)
    assert js('T.flags().length'), 'a roll offers flags'
    ball = js("T.view('Ball').v.rect")
    click(f'CDdest({js("T.flags()[0]")})')
    wait(f"T.view('Ball').v.rect.join() !== '{','.join(map(str, ball))}'", 'the ball flies')


def refused(url):
    """True when the page's policy refuses a connection to `url` (and says so)."""
    return driver.execute_async_script('''const done = arguments[arguments.length - 1];
      let said = false;
      document.addEventListener('securitypolicyviolation', (e) => {
        said = said || e.violatedDirective.startsWith('connect-src'); }, { once: true });
      fetch(arguments[0]).then(() => done(false), () => setTimeout(() => done(said), 100));''',
                                       url)


if __name__ == '__main__':
    site = os.path.abspath(sys.argv[1])
    shots = sys.argv[2] if len(sys.argv) > 2 else '.'
    os.makedirs(shots, exist_ok=True)
    # On a free port; it says which once it serves: "Serving HTTP on 127.0.0.1 port N ...".
    server = subprocess.Popen([sys.executable, '-u', '-m', 'http.server', '--bind', '127.0.0.1',
                               '--directory', site, '0'], stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True)
    url = f'http://127.0.0.1:{server.stdout.readline().split()[5]}/'
    driver = page_test.driver = chromium()  # page_test's helpers drive it
    try:
        driver.get(url)
        opened()
        errors = driver.execute_cdp_cmd('Page.getInstallabilityErrors', {})
        assert not errors.get('installabilityErrors'), f'not installable: {errors}'
        state = driver.execute_async_script(
            'navigator.serviceWorker.ready.then((r) => arguments[0](r.active.state))')
        assert state in ('activating', 'activated'), f'the service worker is {state}'
        wait('navigator.serviceWorker.controller !== null || (location.reload(), false)',
             'the service worker takes over the page')
        opened()
        assert refused(url + 'manifest.webmanifest'), 'the policy lets the page connect'

        # No network, no server: the kept copy opens and plays.
        server.terminate()
        server.wait()
        driver.execute_cdp_cmd('Network.enable', {})
        driver.execute_cdp_cmd('Network.emulateNetworkConditions', {
            'offline': True, 'latency': 0, 'downloadThroughput': -1, 'uploadThroughput': -1})
        driver.refresh()
        opened()
        kick_plays()
        driver.save_screenshot(os.path.join(shots, 'web-site-offline.png'))
    except AssertionError as failure:
        sys.exit(f'site_test: {failure}')
    finally:
        driver.quit()
        server.kill()
    print('the site: installable, its service worker active, a kick played offline')
