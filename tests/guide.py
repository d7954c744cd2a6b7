#!/usr/bin/env python3
"""guide.py [browser FOLDER]: the page for parents is whole, and names each setting and its first value as the program
writes them. With "browser" Chromium opens it, too, at every link, narrow and wide, and prints it into FOLDER."""
import os
import re
import subprocess
import sys

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
GUIDE = TOP + "/docs/guide"
LANGUAGES = ["ja", "en", "zh", "fr", "it", "de", "es"]
page = open(GUIDE + "/index.html", encoding="utf-8").read()
articles = dict(re.findall(r'<article id="(\w+)" (.*?)</article>', page, re.S))
ids = re.findall(r'\bid="([^"]*)"', page)
links = re.findall(r'href="([^"]*)"', page)
problems = []


def expect(holds, problem):
    if not holds:
        problems.append(problem)


template = re.findall(r'^ *L"([A-Z]\w+)=([^"\\]*)\\r', open(TOP + "/src/settings/options.cpp").read(), re.M)
expect(len(template) == 6 and list(articles) == LANGUAGES, f"{len(template)} settings, languages {list(articles)}")
expect(len(ids) == len(set(ids)), f"two things have one name: {ids}")
expect({*links} <= {"#" + name for name in ids}, f"no places of the page: {[a for a in links if a[1:] not in ids]}")
expect(not re.search(r"https?:|url\(|<(link|iframe)\b|<script[^>]* src", page), "something comes from elsewhere")
expect('name="viewport" content="width=device-width' in page, "phones would show it tiny")
for language, body in articles.items():
    shown = re.findall(r'<th scope="row"><code>(\w+)</code></th><td [^>]*data-value="([^"]*)"', body)
    expect(shown == template, f"settings in {language}: {shown}")
    tags = re.findall(r"<(?!kbd|code|strong)\w+", body)  # where these stand is a matter of wording
    expect(tags == re.findall(r"<(?!kbd|code|strong)\w+", articles["en"]), f"{language} is built otherwise")
    inside = set(re.findall(r'href="#(\w*)', body) + re.findall('^lang="(..)', body))
    expect(inside == {language}, f"{language} says it is, or links to, {inside}")
images = re.findall(r'<img src="([^"]*)"[^>]* alt="[^"]', page)
expect(len(images) == page.count("<img"), "a picture has no words")
expect({*images, "index.html"} == set(os.listdir(GUIDE)), f"shown but not there, or the reverse: {set(images)}")

# What a frame shows: the articles, whether it is wide enough, and whether what the address names is in sight.
LOOK = """<script>const look = ({contentDocument: page, contentWindow: {innerWidth, innerHeight, location}}) => [
    [...page.querySelectorAll("article")].filter(article => article.offsetHeight).map(article => article.id),
    page.documentElement.scrollWidth <= innerWidth,
    page.querySelector(location.hash || "h1").getBoundingClientRect().top < innerHeight].join(" ")</script>"""


def chromium(*arguments):
    flags = ["--headless", "--no-sandbox", "--allow-file-access-from-files", "--hide-scrollbars", *arguments]
    return subprocess.run(["chromium", *flags], capture_output=True, text=True, timeout=300).stdout


def in_browser(folder):
    os.makedirs(folder, exist_ok=True)
    address, frames = f"file://{GUIDE}/index.html", os.path.abspath(folder) + "/frames.html"
    readers = {"de-AT,en": {"": "de"}, "zh-TW,fr": {"": "fr"}, "zh-CN": {"": "zh"},
               "ko": {"": "en"} | {link: link[1:3] for link in links}}
    for accepted, shown in readers.items():
        rows = [(width, link) for width in (390, 1280) for link in shown]
        open(frames, "w").write(LOOK + "".join(
            f'<iframe width="{width}" height="900" src="{address}{link}" onload="this.after(look(this))"></iframe>'
            for width, link in rows))
        seen = re.findall("</iframe>([^<]*)", chromium("--dump-dom", "--accept-lang=" + accepted, "file://" + frames))
        for (width, link), look in zip(rows, seen, strict=True):
            expect(look == shown[link] + " true true", f"{link} at {width} for {accepted}: {look}")
    for language in LANGUAGES:
        chromium("--no-pdf-header-footer", f"--print-to-pdf={folder}/{language}.pdf", f"{address}#{language}")
        pages = len(re.findall(rb"/Type\s*/Page\b", open(f"{folder}/{language}.pdf", "rb").read()))
        expect(pages == 2, f"{language} prints on {pages} pages")


if sys.argv[1:2] == ["browser"]:
    in_browser(sys.argv[2])
print("\n".join(problems or [f"guide: {len(LANGUAGES)} languages, {len(links)} links, nothing amiss"]))
sys.exit(1 if problems else 0)
