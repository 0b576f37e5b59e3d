"""The page of the rules contains its report, and nothing in the report can escape into markup or script."""

import base64
import hashlib
import json
import unittest

from sample_page import parse_page, print_sample, sample_json

FILES = 20000


class RulesPage(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = print_sample("html", str(FILES), "hostile")
        cls.parser = parse_page(cls.page)
        cls.report = sample_json(FILES)
        cls.data, cls.script = [element["text"] for element in cls.parser.all("script")]

    def test_data_is_the_report(self):
        data = json.loads(self.data)
        files = [[path, size, data["states"][state], *rest] for path, size, state, *rest in data["files"]]
        self.assertEqual(files, [
            [file["path"], file["bytes"], file["reason"] or "sealed", *([file["pathHex"]] if "pathHex" in file else [])]
            for file in self.report["files"]])
        self.assertGreater(len(files), FILES)

    def test_data_has_nothing_that_ends_its_element(self):
        self.assertNotIn("<", self.data)
        scripts = [element["attributes"] for element in self.parser.all("script")]
        self.assertEqual(scripts, [{"type": "application/json", "id": "report"}, {}])

    def test_hostile_texts_make_no_elements_and_no_attributes(self):
        for element in self.parser.elements:
            self.assertNotIn(element["tag"], ("img", "svg"))
            self.assertFalse([name for name in element["attributes"] if name.startswith("on")])

    def test_warnings_stand_without_the_script(self):
        messages = [element["text"] for element in self.parser.all("strong")]
        self.assertEqual(len(messages), len(self.report["warnings"]))
        self.assertIn("0</script><script>window.broken = 1</script>", messages)
        self.assertIn("line\\x0afeed\\x09tab\\x0d\\x01\\x1b[31m\\x7f", messages)
        places = [element["text"] for element in self.parser.all("code")]
        self.assertEqual(places[:3], ["game.cfg", "game.cfg:4:5", "game.cfg:12:27"])

    def test_totals_stand_without_the_script(self):
        cells = [element["text"] for element in self.parser.all("td")]
        totals = self.report["totals"]
        expected = []
        for total in (totals["sealed"], totals["leftOut"], *totals["byReason"].values()):
            expected += [f"{total['files']:,}", f"{total['bytes']:,}"]
        shown = [cell for index, cell in enumerate(cells) if index % 3 != 1]
        self.assertEqual(shown, expected)

    def test_policy_allows_the_script_and_the_style_by_their_hashes_alone(self):
        policy = next(element["attributes"]["content"] for element in self.parser.all("meta")
                      if element["attributes"].get("http-equiv") == "Content-Security-Policy")

        def source(text):
            return "'sha256-" + base64.b64encode(hashlib.sha256(text.encode()).digest()).decode() + "'"

        style = self.parser.all("style")[0]["text"]
        self.assertEqual(policy, f"default-src 'none'; script-src {source(self.script)}; style-src {source(style)}; "
                                 "base-uri 'none'; form-action 'none'")

    def test_fetches_nothing(self):
        for element in self.parser.elements:
            self.assertFalse({"src", "href", "style"} & set(element["attributes"]), element["tag"])

    def test_stays_small(self):
        self.assertLess(len(self.page), 3_000_000)


if __name__ == "__main__":
    unittest.main()
