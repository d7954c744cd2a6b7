#!/usr/bin/env python3
"""guide.py [browser FOLDER]: the page for parents is whole, and names each setting and its first value as the program
writes them. With "browser" it is also opened in Chromium: every language and link, narrow, wide and printed; what
that looks like is left in FOLDER."""
import base64
import html.parser
import json
import os
import re
import subprocess
import sys
import urllib.parse
import urllib.request

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PAGE = os.path.join(TOP, "docs/guide/index.html")
LANGUAGES = ["ja", "en", "zh", "fr", "it", "de", "es"]
problems = []


def expect(holds, problem):
    if not holds:
        problems.append(problem)


class Page(html.parser.HTMLParser):
    """One list of tags, settings and links for each language; what stands outside of them belongs to none."""

    def __init__(self):
        super().__init__()
        self.language, self.setting, self.ids = "", "", set()
        self.tags, self.settings, self.links, self.files = {}, {}, [], set()
        self.in_head = False

    def handle_starttag(self, tag, attributes):
        has = dict(attributes)
        if tag == "article":
            self.language = has["id"]
            expect(has["lang"].startswith(has["id"]), f"{has['id']} says it is {has['lang']}")
        if "id" in has:
            expect(has["id"] not in self.ids, f"two things are called {has['id']}")
            self.ids.add(has["id"])
        if tag not in ("kbd", "code", "strong"):  # where these stand is a matter of wording
            self.tags.setdefault(self.language, []).append(tag)
        self.in_head = tag == "th" and has.get("scope") == "row" or self.in_head and tag == "code"
        if "data-value" in has:
            self.settings.setdefault(self.language, []).append((self.setting, has["data-value"]))
        if tag == "a":
            self.links.append((self.language, has["href"]))
        if tag == "img":
            self.files.add(has["src"])
            expect(has.get("alt"), f"{has['src']} has no words in {self.language}")
        expect(tag not in ("link", "iframe") and not (tag == "script" and "src" in has), f"{tag} from elsewhere")

    def handle_data(self, data):
        if self.in_head:
            self.setting, self.in_head = data, False

    def handle_endtag(self, tag):
        if tag == "article":
            self.language = ""


def on_its_own():
    page = Page()
    page.feed(open(PAGE, encoding="utf-8").read())
    source = open(os.path.join(TOP, "src/settings/options.cpp"), encoding="utf-8").read()
    template = re.findall(r'^ *L"([A-Z]\w+)=([^"\\]*)\\r', source, re.M)
    expect(len(template) == 6, f"the template has {len(template)} settings")
    for language in LANGUAGES:
        expect(page.settings.get(language) == template, f"settings in {language}: {page.settings.get(language)}")
        expect(page.tags.get(language) == page.tags["en"], f"{language} is built otherwise than en")
    for language, link in page.links:
        inside = link.startswith("#") and link[1:] in page.ids
        expect(inside and (not language or link.startswith(f"#{language}-")), f"{link} in {language or 'the head'}")
    beside = set(os.listdir(os.path.dirname(PAGE))) - {"index.html"}
    expect(page.files == beside, f"shown but not there, or the reverse: {page.files ^ beside}")
    return page


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

    def call(self, path, body):
        request = urllib.request.Request(self.at + path, json.dumps(body).encode(),
                                         {"Content-Type": "application/json"})
        return json.load(urllib.request.urlopen(request, timeout=120))["value"]

    def tool(self, name, **parameters):
        return self.call("/goog/cdp/execute", {"cmd": name, "params": parameters})

    def ask(self, script):
        return self.call("/execute/sync", {"script": "return " + script, "args": []})

    def open(self, fragment=""):
        self.call("/url", {"url": "about:blank"})
        self.call("/url", {"url": "file://" + urllib.parse.quote(PAGE) + fragment})

    def shown(self):
        return self.ask("[...document.querySelectorAll('article')].filter(a => a.offsetHeight > 0).map(a => a.id)")

    def close(self):
        urllib.request.urlopen(urllib.request.Request(self.at, method="DELETE"), timeout=60)
        self.driver.terminate()
        self.driver.wait()


def in_browser(page, folder):
    os.makedirs(folder, exist_ok=True)
    for accepted, language in [("de-AT,en", "de"), ("zh-TW,fr", "fr"), ("zh-CN", "zh"), ("ko", "en")]:
        browser = Browser(accepted)
        browser.open()
        expect(browser.shown() == [language], f"to readers of {accepted} it shows {browser.shown()}")
        browser.open("#it")
        expect(browser.shown() == ["it"], f"#it shows {browser.shown()}")
        if accepted != "ko":
            browser.close()
    for language, link in page.links:
        browser.open("#" + (language or "en"))
        element = browser.call("/element", {"using": "css selector", "value": f'a[href="{link}"]'})
        browser.call(f"/element/{list(element.values())[0]}/click", {})
        there = browser.ask(f"document.querySelector('{link}').getBoundingClientRect().top < innerHeight")
        expect(there and browser.shown() == [language or link[1:]], f"{link} leads to {browser.shown()}")
    for language in LANGUAGES:
        for look, width, scheme in [("phone", 390, "light"), ("desk", 1280, "light"), ("dark", 1280, "dark")]:
            browser.tool("Emulation.setDeviceMetricsOverride", width=width, height=900, deviceScaleFactor=1,
                         mobile=width < 500)
            browser.tool("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
            browser.open("#" + language)
            browser.ask("Promise.all([...document.images].map(i => "
                        "(i.loading = 'eager', i.offsetHeight && i.decode())))")
            broken = browser.ask("[...document.images].filter(i => i.offsetHeight && !i.naturalWidth).length")
            wide = browser.ask("document.documentElement.scrollWidth")
            expect(broken == 0 and wide <= width, f"{language} at {width}: {wide} wide, {broken} pictures missing")
            height = browser.ask("document.documentElement.scrollHeight")
            picture = browser.tool("Page.captureScreenshot", captureBeyondViewport=True,
                                   clip={"x": 0, "y": 0, "width": width, "height": height, "scale": 1})
            open(f"{folder}/{language}-{look}.png", "wb").write(base64.b64decode(picture["data"]))
        browser.tool("Emulation.setEmulatedMedia", features=[])
        pdf = base64.b64decode(browser.tool("Page.printToPDF", preferCSSPageSize=True, printBackground=False)["data"])
        open(f"{folder}/{language}.pdf", "wb").write(pdf)
        pages = len(re.findall(rb"/Type\s*/Page\b", pdf))
        expect(pages == 2, f"{language} prints on {pages} pages")
    browser.close()


found = on_its_own()
if sys.argv[1:2] == ["browser"]:
    in_browser(found, sys.argv[2])
print("\n".join(problems or [f"guide: {len(LANGUAGES)} languages, {len(found.links)} links, nothing amiss"]))
sys.exit(1 if problems else 0)
