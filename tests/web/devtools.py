"""Headless Chromium driven through its DevTools protocol, with Python's standard library alone:
the protocol runs over a pair of pipes (--remote-debugging-pipe), one JSON message per NUL."""
import base64
import fcntl
import json
import os
import shutil
import subprocess
import tempfile
import time

# The flags that work on this Debian machine, in a container without a GPU or a network.
FLAGS = ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
         '--disable-background-networking', '--disable-component-update', '--disable-sync']


class Browser:
    def __init__(self, binary, width, height, scale=1):
        self.width, self.height, self.scale = width, height, scale
        self.profile = tempfile.mkdtemp(prefix='quorvel-chromium-')
        commands_r, self._commands = os.pipe()
        self._answers, answers_w = os.pipe()

        # Chromium reads commands on descriptor 3 and writes answers on 4.
        def onto_3_and_4():
            high = [fcntl.fcntl(fd, fcntl.F_DUPFD, 10) for fd in (commands_r, answers_w)]
            os.dup2(high[0], 3)
            os.dup2(high[1], 4)

        self.process = subprocess.Popen(
            [binary, *FLAGS, f'--user-data-dir={self.profile}', '--remote-debugging-pipe',
             f'--window-size={width},{height}', 'about:blank'],
            preexec_fn=onto_3_and_4, pass_fds=(3, 4), stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(commands_r)
        os.close(answers_w)
        self._next = 0
        self._buffer = b''
        self.events = []  # every event seen, in order: (method, params)

    def close(self):
        try:
            self.send('Browser.close')
        except (OSError, RuntimeError):
            pass
        try:
            self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        os.close(self._commands)
        os.close(self._answers)
        shutil.rmtree(self.profile, ignore_errors=True)

    def _read(self):
        while b'\0' not in self._buffer:
            chunk = os.read(self._answers, 1 << 16)
            if not chunk:
                raise RuntimeError('Chromium closed its DevTools pipe')
            self._buffer += chunk
        message, self._buffer = self._buffer.split(b'\0', 1)
        return json.loads(message)

    def send(self, method, params=None, session=None):
        self._next += 1
        message = {'id': self._next, 'method': method, 'params': params or {}}
        if session:
            message['sessionId'] = session
        os.write(self._commands, json.dumps(message).encode() + b'\0')
        while True:
            answer = self._read()
            if answer.get('id') == self._next:
                if 'error' in answer:
                    raise RuntimeError(f'{method}: {answer["error"]}')
                return answer.get('result', {})
            if 'method' in answer:
                self.events.append((answer['method'], answer.get('params', {})))

    def open(self, url):
        """A new tab showing `url`, its viewport the browser's size and pixel ratio."""
        self.send('Target.setDiscoverTargets', {'discover': True})
        target = self.send('Target.createTarget', {'url': url})['targetId']
        session = self.send('Target.attachToTarget',
                            {'targetId': target, 'flatten': True})['sessionId']
        tab = Tab(self, session)
        tab.send('Emulation.setDeviceMetricsOverride',
                 {'width': self.width, 'height': self.height, 'deviceScaleFactor': self.scale,
                  'mobile': False})
        return tab


class Tab:
    def __init__(self, browser, session):
        self.browser = browser
        self.session = session

    def send(self, method, params=None):
        return self.browser.send(method, params, self.session)

    def evaluate(self, expression):
        answer = self.send('Runtime.evaluate', {'expression': expression, 'returnByValue': True,
                                                'awaitPromise': True})
        if 'exceptionDetails' in answer:
            raise RuntimeError(f'{expression}: {answer["exceptionDetails"]}')
        return answer['result'].get('value')

    def wait_for(self, expression, what, timeout=60):
        """Polls until `expression` is true; a failure naming `what` after `timeout` seconds."""
        end = time.monotonic() + timeout
        while not self.evaluate(expression):
            if time.monotonic() > end:
                raise AssertionError(f'{what}: not seen within {timeout} s')
            time.sleep(0.05)

    def click(self, x, y):
        for kind in ('mouseMoved', 'mousePressed', 'mouseReleased'):
            self.send('Input.dispatchMouseEvent', {'type': kind, 'x': x, 'y': y, 'button': 'left',
                                                   'buttons': 1, 'clickCount': 1})

    def key(self, text, code):
        for kind in ('keyDown', 'keyUp'):
            self.send('Input.dispatchKeyEvent',
                      {'type': kind, 'text': text if kind == 'keyDown' else '', 'key': text,
                       'code': code})

    def screenshot(self, path):
        data = self.send('Page.captureScreenshot', {'format': 'png'})['data']
        with open(path, 'wb') as out:
            out.write(base64.b64decode(data))
