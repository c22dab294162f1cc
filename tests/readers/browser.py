"""A browser without a window, driven through its debugging pipe."""
import base64
import itertools
import json
import os
import shutil
import subprocess

PROGRAMS = ['chromium', 'chromium-browser', 'google-chrome']


def program():
    """The path of a browser, or None."""
    return next(filter(None, map(shutil.which, PROGRAMS)), None)


class Browser:
    """One page. `events` are all that the browser has told since open()."""

    def __init__(self, folder):
        to_read, self.pipe = os.pipe()
        self.answers, to_write = os.pipe()

        def take_pipes():
            os.dup2(os.dup(to_read), 3, inheritable=True)
            os.dup2(os.dup(to_write), 4, inheritable=True)
        # The copies above keep the one from closing what the other needs.
        self.process = subprocess.Popen(
            [program(), '--headless=new', '--no-sandbox', '--disable-gpu', '--disable-dev-shm-usage',
             '--remote-debugging-pipe', '--no-first-run', '--user-data-dir=' + folder],
            preexec_fn=take_pipes, close_fds=False, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(to_read)
        os.close(to_write)
        self.numbers, self.rest, self.events, self.session = itertools.count(1), b'', [], None
        target = self.call('Target.createTarget', url='about:blank')['targetId']
        self.session = self.call('Target.attachToTarget', targetId=target, flatten=True)['sessionId']
        for domain in ('Page', 'Runtime', 'Log', 'Network', 'Audits'):
            self.call(domain + '.enable')

    def __enter__(self):
        return self

    def __exit__(self, *_):
        os.close(self.pipe)
        self.process.terminate()
        self.process.wait()
        os.close(self.answers)

    def message(self):
        while b'\0' not in self.rest:
            data = os.read(self.answers, 1 << 20)
            if not data:
                raise EOFError('the browser has ended')
            self.rest += data
        text, self.rest = self.rest.split(b'\0', 1)
        return json.loads(text)

    def call(self, method, **parameters):
        number = next(self.numbers)
        request = {'id': number, 'method': method, 'params': parameters}
        if self.session:
            request['sessionId'] = self.session
        data = json.dumps(request).encode() + b'\0'
        while data:
            data = data[os.write(self.pipe, data):]
        while True:
            message = self.message()
            if message.get('id') == number:
                if 'error' in message:
                    raise ValueError(f'{method}: {message["error"]}')
                return message['result']
            self.events.append(message)

    def open(self, path):
        self.events = []
        self.call('Page.navigate', url='file://' + path)
        while not any(each.get('method') == 'Page.loadEventFired' for each in self.events):
            self.events.append(self.message())

    def value(self, expression, wait=False):
        """Of a script's expression, run as if a person clicked; with `wait`, what it promises."""
        result = self.call('Runtime.evaluate', expression=expression, returnByValue=True, awaitPromise=wait,
                           userGesture=True)
        if 'exceptionDetails' in result:
            raise ValueError(f'{expression}: {result["exceptionDetails"]}')
        return result['result'].get('value')

    def complaints(self):
        """Messages on the console, errors of scripts, and what the content security policy refused."""
        kinds = ('Runtime.consoleAPICalled', 'Runtime.exceptionThrown', 'Log.entryAdded', 'Audits.issueAdded')
        return [each for each in self.events if each.get('method') in kinds]

    def requests(self):
        return [each['params']['request']['url'] for each in self.events
                if each.get('method') == 'Network.requestWillBeSent']

    def picture(self, path, width, dark=False, whole=True):
        """Writes a PNG file of the page in that width."""
        self.call('Emulation.setDeviceMetricsOverride', width=width, height=900, deviceScaleFactor=1, mobile=False)
        self.call('Emulation.setEmulatedMedia',
                  features=[{'name': 'prefers-color-scheme', 'value': 'dark' if dark else 'light'}])
        data = self.call('Page.captureScreenshot', captureBeyondViewport=whole)['data']
        with open(path, 'wb') as file:
            file.write(base64.b64decode(data))

    def pdf(self, path, width, height):
        """Prints the page on paper of that size in inches."""
        data = self.call('Page.printToPDF', paperWidth=width, paperHeight=height, printBackground=False,
                         preferCSSPageSize=False)['data']
        with open(path, 'wb') as file:
            file.write(base64.b64decode(data))
