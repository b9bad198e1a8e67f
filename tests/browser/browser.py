# SPDX-License-Identifier: MIT
"""A headless Chromium, driven over the WebDriver protocol, which chromedriver speaks on the loopback interface."""

import base64
import json
import os
import re
import shutil
import subprocess
import tempfile
import urllib.error
import urllib.request

ELEMENT = 'element-6066-11e4-a52e-4f735466cecf'

KEYS = {
    'End': '\ue010', 'Home': '\ue011', 'ArrowLeft': '\ue012', 'ArrowUp': '\ue013', 'ArrowRight': '\ue014',
    'ArrowDown': '\ue015', 'PageUp': '\ue00e', 'PageDown': '\ue00f', 'Tab': '\ue004',
}

FLAGS = [
    '--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
    '--disable-background-networking', '--disable-component-update', '--disable-sync',
    '--disable-dev-shm-usage', '--force-color-profile=srgb',
]


def missing_programs():
    """The programs that Debian's packages chromium and chromium-driver install and this machine lacks."""
    return [name for name in ('chromium', 'chromedriver') if shutil.which(name) is None]


class Browser:
    """A browser with a new profile. Use it in a `with` statement, which ends its processes."""

    def __enter__(self):
        self.profile = tempfile.TemporaryDirectory(ignore_cleanup_errors=True)
        # Requests to chromedriver go to this machine, whatever the environment says.
        self.opener = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        self.driver = subprocess.Popen(['chromedriver', '--port=0'], stdout=subprocess.PIPE, text=True,
                                       env={**os.environ, 'HOME': self.profile.name})
        try:
            self.url = 'http://127.0.0.1:' + self._port()
            options = {'binary': shutil.which('chromium'),
                       'args': FLAGS + ['--user-data-dir=' + os.path.join(self.profile.name, 'data')]}
            capabilities = {'goog:chromeOptions': options,
                            'goog:loggingPrefs': {'browser': 'ALL', 'performance': 'ALL'}}
            answer = self._call('POST', '/session', {'capabilities': {'alwaysMatch': capabilities}})
            self.url += '/session/' + answer['sessionId']
        except BaseException:
            self.driver.kill()
            raise
        return self

    def __exit__(self, *_):
        try:
            self._call('DELETE', '')
        finally:
            self.driver.terminate()
            self.driver.wait()
            self.driver.stdout.close()
            self.profile.cleanup()

    def _port(self):
        for line in self.driver.stdout:
            found = re.search(r'started successfully on port (\d+)', line)
            if found:
                return found.group(1)
        raise RuntimeError('chromedriver did not start')

    def _call(self, method, path, body=None):
        data = None if body is None else json.dumps(body).encode()
        request = urllib.request.Request(self.url + path, data, {'Content-Type': 'application/json'}, method=method)
        try:
            with self.opener.open(request, timeout=60) as answer:
                return json.load(answer)['value']
        except urllib.error.HTTPError as error:
            raise RuntimeError(json.load(error)['value']['message']) from None

    def open(self, path):
        self._call('POST', '/url', {'url': 'file://' + os.path.abspath(path)})

    def run(self, script, *arguments):
        """The value that the body of a function returns in the page."""
        return self._call('POST', '/execute/sync', {'script': script, 'args': list(arguments)})

    def command(self, name, **parameters):
        """Runs a command of the DevTools protocol."""
        return self._call('POST', '/goog/cdp/execute', {'cmd': name, 'params': parameters})

    def set_size(self, width, height, mobile=False):
        self.command('Emulation.setDeviceMetricsOverride', width=width, height=height, deviceScaleFactor=1,
                     mobile=mobile)

    def set_media(self, **features):
        """For example prefers_color_scheme='dark'."""
        listed = [{'name': name.replace('_', '-'), 'value': value} for name, value in features.items()]
        self.command('Emulation.setEmulatedMedia', media=features.pop('media', ''), features=listed)

    def press(self, *keys):
        actions = []
        for key in keys:
            value = KEYS.get(key, key)
            actions += [{'type': 'keyDown', 'value': value}, {'type': 'keyUp', 'value': value}]
        self._act({'type': 'key', 'id': 'keyboard', 'actions': actions})

    def move_pointer(self, selector, x, y):
        """Moves the mouse to a place in an element, in parts of its width and height."""
        self._act({'type': 'pointer', 'id': 'mouse', 'parameters': {'pointerType': 'mouse'},
                   'actions': [self._to(selector, x, y)]})

    def drag(self, selector, start, end):
        steps = [self._to(selector, *start), {'type': 'pointerDown', 'button': 0},
                 self._to(selector, *end), {'type': 'pointerUp', 'button': 0}]
        self._act({'type': 'pointer', 'id': 'mouse', 'parameters': {'pointerType': 'mouse'}, 'actions': steps})

    def tap(self, selector, x, y):
        steps = [self._to(selector, x, y), {'type': 'pointerDown', 'button': 0}, {'type': 'pointerUp', 'button': 0}]
        self._act({'type': 'pointer', 'id': 'finger', 'parameters': {'pointerType': 'touch'}, 'actions': steps})

    def click(self, selector):
        self._call('POST', '/element/' + self._find(selector) + '/click', {})

    def _find(self, selector):
        return self._call('POST', '/element', {'using': 'css selector', 'value': selector})[ELEMENT]

    def _to(self, selector, x, y):
        left, top, width, height = self.run(
            'const e = document.querySelector(arguments[0]); e.scrollIntoView({block: "center"});'
            'const r = e.getBoundingClientRect(); return [r.left, r.top, r.width, r.height];', selector)
        return {'type': 'pointerMove', 'duration': 0, 'origin': 'viewport', 'x': round(left + x * width),
                'y': round(top + y * height)}

    def _act(self, source):
        self._call('POST', '/actions', {'actions': [source]})

    def log(self, kind):
        """What was logged since the last call."""
        return self._call('POST', '/se/log', {'type': kind})

    def requests(self):
        """Addresses that pages asked for since the last call."""
        messages = [json.loads(entry['message'])['message'] for entry in self.log('performance')]
        return [message['params']['request']['url'] for message in messages
                if message['method'] == 'Network.requestWillBeSent']

    def screenshot(self, path):
        with open(path, 'wb') as file:
            file.write(base64.b64decode(self._call('GET', '/screenshot')))
