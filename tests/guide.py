#!/usr/bin/env python3
"""guide.py [browser FOLDER]: the page for parents is whole, and names each setting and its first value as the program
writes them. With "browser" it is also opened in Chromium: every language and link, narrow, wide and printed; what
that looks like is left in FOLDER."""
import base64
import json
import os
import re
import subprocess
import sys
import urllib.parse
import urllib.request

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
GUIDE = os.path.join(TOP, "docs/guide")
LANGUAGES = ["ja", "en", "zh", "fr", "it", "de", "es"]
page = open(os.path.join(GUIDE, "index.html"), encoding="utf-8").read()
articles = {language: (code, body) for language, code, body in
            re.findall(r'<article id="(\w+)" lang="([^"]*)">(.*?)</article>', page, re.S)}
links = [("", link) for link in re.findall(r'href="([^"]*)"', re.sub("<article.*?</article>", "", page, flags=re.S))]
problems = []


def expect(holds, problem):
    if not holds:
        problems.append(problem)


def on_its_own():
    source = open(os.path.join(TOP, "src/settings/options.cpp"), encoding="utf-8").read()
    template = re.findall(r'^ *L"([A-Z]\w+)=([^"\\]*)\\r', source, re.M)
    expect(len(template) == 6 and list(articles) == LANGUAGES, f"{len(template)} settings, languages {list(articles)}")
    ids = re.findall(r'\bid="([^"]*)"', page)
    expect(len(ids) == len(set(ids)), f"two things have one name: {ids}")
    expect(not re.search(r"<(link|iframe)\b|<script[^>]* src", page), "something comes from elsewhere")
    for language, (code, body) in articles.items():
        shown = re.findall(r'<th scope="row"><code>(\w+)</code></th><td [^>]*data-value="([^"]*)"', body)
        expect(shown == template, f"settings in {language}: {shown}")
        tags = re.findall(r"<(?!kbd|code|strong)\w+", body)  # where these stand is a matter of wording
        expect(tags == re.findall(r"<(?!kbd|code|strong)\w+", articles["en"][1]), f"{language} is built otherwise")
        expect(code.startswith(language), f"{language} says it is {code}")
        links.extend((language, link) for link in re.findall(r'href="([^"]*)"', body))
    for language, link in links:
        inside = link[:1] == "#" and link[1:] in ids
        expect(inside and (not language or link.startswith(f"#{language}-")), f"{link} in {language or 'the head'}")
    images = re.findall(r"<img[^>]*>", page)
    expect(all(re.search(r'alt="[^"]', image) for image in images), "a picture has no words")
    files = {re.search(r'src="([^"]*)"', image)[1] for image in images} ^ (set(os.listdir(GUIDE)) - {"index.html"})
    expect(not files, f"shown but not there, or the reverse: {files}")


class Browser:
    """Chromium by way of its driver, whose commands are JSON over HTTP."""

    def __init__(self, accepted):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        port = next(re.search(r"port (\d+)\.", line)[1] for line in self.driver.stdout if "successfully" in line)
        self.at = f"http://127.0.0.1:{port}/session"
        flags = ["headless", "no-sandbox", "disable-gpu", "disable-quic", "no-first-run", "hide-scrollbars",
                 "disable-background-networking", "disable-component-update", "disable-sync"]
        options = {"args": ["--" + flag for flag in flags], "prefs": {"intl.accept_languages": accepted}}
        answer = self.call("", {"capabilities": {"alwaysMatch": {"goog:chromeOptions": options}}})
        self.at += "/" + answer["sessionId"]

    def call(self, path, body=None):
        request = urllib.request.Request(self.at + path, body is not None and json.dumps(body).encode() or None,
                                         {"Content-Type": "application/json"}, method="POST" if path or body else "DELETE")
        return json.load(urllib.request.urlopen(request, timeout=120))["value"]

    def tool(self, name, **parameters):
        return self.call("/goog/cdp/execute", {"cmd": name, "params": parameters})

    def ask(self, script):
        return self.call("/execute/sync", {"script": "return " + script, "args": []})

    def shows(self, fragment=""):
        """Opens the page there; the languages that can be seen."""
        self.call("/url", {"url": "about:blank"})
        self.call("/url", {"url": "file://" + urllib.parse.quote(GUIDE) + "/index.html" + fragment})
        return self.shown()

    def shown(self):
        return self.ask("[...document.querySelectorAll('article')].filter(a => a.offsetHeight > 0).map(a => a.id)")

    def close(self):
        self.call("")
        self.driver.terminate()
        self.driver.wait()


def in_browser(folder):
    os.makedirs(folder, exist_ok=True)
    for accepted, language in [("de-AT,en", "de"), ("zh-TW,fr", "fr"), ("zh-CN", "zh"), ("ko", "en")]:
        browser = Browser(accepted)
        expect(browser.shows() == [language], f"to readers of {accepted} it shows {browser.shown()}")
        expect(browser.shows("#it") == ["it"], f"#it shows {browser.shown()}")
        if accepted != "ko":
            browser.close()
    for language, link in links:
        browser.shows("#" + (language or "en"))
        browser.ask(f"document.querySelector('a[href=\"{link}\"]').click()")
        there = browser.ask(f"document.querySelector('{link}').getBoundingClientRect().top < innerHeight")
        expect(there and browser.shown() == [language or link[1:]], f"{link} leads to {browser.shown()}")
    for language in LANGUAGES:
        for look, width, scheme in [("phone", 390, "light"), ("desk", 1280, "light"), ("dark", 1280, "dark")]:
            browser.tool("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1,
                         mobile=width < 500)
            browser.tool("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
            browser.shows("#" + language)
            browser.ask("Promise.all([...document.images].map(i => (i.loading = 'eager', i.offsetHeight && i.decode())))")
            broken = browser.ask("[...document.images].filter(i => i.offsetHeight && !i.naturalWidth).length")
            wide, height = browser.ask("(e => [e.scrollWidth, e.scrollHeight])(document.documentElement)")
            expect(broken == 0 and wide <= width, f"{language} at {width}: {wide} wide, {broken} pictures missing")
            picture = browser.tool("Page.captureScreenshot", captureBeyondViewport=True,
                                   clip={"x": 0, "y": 0, "width": width, "height": height, "scale": 1})
            open(f"{folder}/{language}-{look}.png", "wb").write(base64.b64decode(picture["data"]))
        browser.tool("Emulation.setEmulatedMedia", features=[])
        pdf = base64.b64decode(browser.tool("Page.printToPDF", preferCSSPageSize=True, printBackground=False)["data"])
        open(f"{folder}/{language}.pdf", "wb").write(pdf)
        pages = len(re.findall(rb"/Type\s*/Page\b", pdf))
        expect(pages == 2, f"{language} prints on {pages} pages")
    browser.close()


on_its_own()
if sys.argv[1:2] == ["browser"]:
    in_browser(sys.argv[2])
print("\n".join(problems or [f"guide: {len(LANGUAGES)} languages, {len(links)} links, nothing amiss"]))
sys.exit(1 if problems else 0)
