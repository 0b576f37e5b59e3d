"""The page of a sample report, and what an independent HTML parser finds in it."""

import html.parser
import json
import os
import subprocess

SAMPLE_REPORT = os.environ.get("SEALKEEPER_SAMPLE_REPORT", "")


def print_sample(*arguments):
    return subprocess.run([SAMPLE_REPORT, *arguments], check=True, capture_output=True, timeout=60).stdout


def sample_json(files):
    """The JSON form of the report with hostile names."""
    return json.loads(print_sample("json", str(files), "hostile"))


class PageParser(html.parser.HTMLParser):
    """Collects the elements of a page with their attributes and their immediate text."""

    VOID = {"meta", "input"}

    def __init__(self):
        super().__init__()
        self.elements = []
        self.open = []

    def handle_starttag(self, tag, attrs):
        element = {"tag": tag, "attributes": dict(attrs), "text": ""}
        self.elements.append(element)
        if tag not in self.VOID:
            self.open.append(element)

    def handle_endtag(self, tag):
        if self.open[-1]["tag"] != tag:
            raise AssertionError(f"</{tag}> ends <{self.open[-1]['tag']}>")
        self.open.pop()

    def handle_data(self, data):
        if self.open:
            self.open[-1]["text"] += data

    def all(self, tag):
        return [element for element in self.elements if element["tag"] == tag]


def parse_page(page):
    parser = PageParser()
    parser.feed(page.decode("utf-8"))
    parser.close()
    if parser.open:
        raise AssertionError(f"<{parser.open[-1]['tag']}> is never closed")
    return parser
