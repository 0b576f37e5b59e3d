"""The page of the rules in Chromium, with 20,000 files and names that try to act as markup.

If SEALKEEPER_SCREENSHOTS names a directory, screenshots are saved there.
"""

import base64
import os
import pathlib
import shutil
import tempfile
import unittest

import html5lib
from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.action_chains import ActionChains
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import Select, WebDriverWait

from sample_page import print_sample, sample_json

FILES = 20000
DESKTOP = (1280, 900)
PHONE = (390, 844)
SCREENSHOTS = os.environ.get("SEALKEEPER_SCREENSHOTS")


def start_browser():
    options = webdriver.ChromeOptions()
    options.binary_location = shutil.which("chromium")
    for argument in ("--headless=new", "--disable-dev-shm-usage", "--hide-scrollbars"):
        options.add_argument(argument)
    if os.geteuid() == 0:
        # Its sandbox does not run as root.
        options.add_argument("--no-sandbox")
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)


class RulesPageInBrowser(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.page = print_sample("html", str(FILES), "hostile")
        cls.files = sample_json(FILES)["files"]
        cls.directory = tempfile.TemporaryDirectory()
        cls.addClassCleanup(cls.directory.cleanup)
        cls.path = pathlib.Path(cls.directory.name, "rules.html")
        cls.path.write_bytes(cls.page)
        cls.browser = start_browser()
        cls.addClassCleanup(cls.browser.quit)

    def setUp(self):
        self.set_size(DESKTOP)
        self.set_scheme("light")
        self.load()

    def tearDown(self):
        """Whatever the test did, neither script nor policy reported an error, and no name was executed."""
        self.assertEqual(self.browser.get_log("browser"), [])
        self.assertIsNone(self.browser.execute_script("return window.broken ?? null"))

    # User actions.

    def load(self):
        self.browser.get(self.path.as_uri())

    def set_size(self, size):
        self.browser.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": size[0], "height": size[1], "deviceScaleFactor": 1, "mobile": size == PHONE})

    def set_scheme(self, scheme):
        self.browser.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": scheme}]})

    def find(self, selector):
        return self.browser.find_element(By.CSS_SELECTOR, selector)

    def all(self, selector):
        return self.browser.find_elements(By.CSS_SELECTOR, selector)

    def press(self, *keys):
        self.find("#map-area").send_keys(*keys)

    def filter(self, text, state="all"):
        self.find("#filter-text").clear()
        self.find("#filter-text").send_keys(text)
        Select(self.find("#filter-state")).select_by_visible_text(state)

    def click_map(self, x, y):
        """Click at a position relative to the upper left corner of the map."""
        area = self.find("#map-area")
        self.browser.execute_script("arguments[0].scrollIntoView()", area)
        ActionChains(self.browser).move_to_element_with_offset(
            area, x - area.size["width"] // 2, y - area.size["height"] // 2).click().perform()

    # What the page shows.

    def folders_above_map(self):
        return [button.text for button in self.all("#trail button")]

    def count_of(self, chosen):
        return sum(1 for file in self.files if chosen(file))

    def assert_listed(self, chosen, where=""):
        """The table has as many files as `chosen` holds for."""
        count = self.count_of(chosen)
        self.assertGreater(count, 0)
        self.assertTrue(self.find("#files-count").text.startswith(f"{count:,} files{where}, "),
                        (self.find("#files-count").text, count))
        self.assertEqual(len(self.all("#file-table tbody tr")), min(count, 100))

    def largest_folder(self, above=""):
        """The largest folder directly in `above`, which ends in a slash."""
        bytes_of = {}
        for file in self.files:
            folder, slash, _ = file["path"].removeprefix(above).partition("/")
            if slash and file["path"].startswith(above):
                bytes_of[folder] = bytes_of.get(folder, 0) + file["bytes"]
        return max(bytes_of, key=bytes_of.get)

    def save_picture(self, name):
        if SCREENSHOTS:
            self.browser.execute_script("document.getElementById('overview').scrollIntoView()")
            picture = self.browser.execute_cdp_cmd("Page.captureScreenshot", {"format": "png"})
            pathlib.Path(SCREENSHOTS, name).write_bytes(base64.b64decode(picture["data"]))

    # The tests.

    def test_is_html(self):
        parser = html5lib.HTMLParser()
        parser.parse(self.page)
        # A name may hold characters that HTML forbids but browsers accept.
        self.assertEqual({code for _, code, _ in parser.errors} - {"invalid-codepoint"}, set())

    def test_hostile_names_stay_text(self):
        self.assertEqual(self.browser.title, "What generate seals of /home/studio/castle")
        self.assertEqual(self.all("img, svg"), [])
        self.filter("hostile/")
        self.assert_listed(lambda file: file["path"].startswith("hostile/"))
        shown = [cell.text for cell in self.all("#file-table td:first-child")]
        for text in ("hostile/0</script><script>window.broken = 1</script>", "hostile/__proto__",
                     "hostile/turned \u27e8U+202E\u27e9gpj.exe", "hostile/&lt;b&gt;&amp;"):
            self.assertIn(text, shown)
        self.assertIn("turned \\xe2\\x80\\xaegpj.exe", [message.text for message in self.all("#warnings strong")])
        self.assertTrue(any(text.endswith("not UTF-8, in bytes: 686f7374696c652f6e6f205554462d3820ffc328eda080")
                            for text in shown))
        self.save_picture("hostile-names.png")

    def test_policy_is_in_force(self):
        violated = self.browser.execute_async_script("""
            const done = arguments[arguments.length - 1];
            document.addEventListener('securitypolicyviolation', (event) => done(event.effectiveDirective));
            const script = document.createElement('script');
            script.textContent = 'window.broken = 5';
            document.body.append(script);""")
        self.assertEqual(violated, "script-src-elem")
        self.assertEqual(len(self.browser.get_log("browser")), 1)

    def test_filter_narrows_the_table(self):
        self.assert_listed(lambda file: True)
        self.filter("TEXTURES/set_1")
        self.assert_listed(lambda file: "textures/set_1" in file["path"])
        self.filter("", "left out: size")
        self.assert_listed(lambda file: file["reason"] == "size")
        self.filter("set_1", "left out")
        self.assert_listed(lambda file: "set_1" in file["path"] and file["state"] == "left out")
        self.filter("item_1", "sealed")
        self.assert_listed(lambda file: "item_1" in file["path"] and file["state"] == "sealed")

    def test_table_without_a_find_is_empty(self):
        self.filter("there is no such file")
        self.assertEqual(self.find("#files-count").text, "0 files, 0 bytes")
        self.assertEqual(self.all("#file-table tbody tr"), [])
        self.assertEqual(self.find("#page-number").text, "No files")

    def test_click_on_a_folder_opens_it(self):
        largest = self.largest_folder()
        self.click_map(8, 8)
        self.assertEqual(self.folders_above_map(), ["Game", largest])
        self.assert_listed(lambda file: file["path"].startswith(largest + "/"), f" in {largest}/")
        self.save_picture("folder.png")
        self.all("#trail button")[0].click()
        self.assertEqual(self.folders_above_map(), ["Game"])
        self.assert_listed(lambda file: True)

    def test_click_inside_a_folder_goes_one_level_in(self):
        area = self.find("#map-area").size
        self.click_map(area["width"] * 0.1, area["height"] * 0.2)
        self.assertEqual(self.folders_above_map(), ["Game", self.largest_folder()])

    def test_click_on_the_heading_of_a_folder_opens_that_one(self):
        outer = self.largest_folder()
        inner = self.largest_folder(outer + "/")
        self.click_map(8, 18 + 8)
        self.assertEqual(self.folders_above_map(), ["Game", outer, inner])

    def test_map_is_squarified(self):
        """The example from the paper: Bruls, Huizing and van Wijk (2000)."""
        boxes = self.browser.execute_script("""
            const nodes = [6, 6, 4, 3, 2, 2, 1].map((bytes) => ({ bytes }));
            squarify(nodes, { x: 0, y: 0, width: 6, height: 4 });
            return nodes.map(({ box }) => [box.x, box.y, box.width, box.height]);""")
        expected = [(0, 0, 3, 2), (0, 2, 3, 2), (3, 0, 12 / 7, 7 / 3), (33 / 7, 0, 9 / 7, 7 / 3),
                    (3, 7 / 3, 6 / 5, 5 / 3), (21 / 5, 7 / 3, 6 / 5, 5 / 3), (27 / 5, 7 / 3, 3 / 5, 5 / 3)]
        for box, place in zip(boxes, expected, strict=True):
            for side, right in zip(box, place, strict=True):
                self.assertAlmostEqual(side, right)

    def test_keys_move_open_and_go_back(self):
        largest = self.largest_folder()
        self.press(Keys.ARROW_RIGHT)
        self.assertTrue(self.find("#map-detail").text.startswith(f"{largest}/: "))
        self.press(Keys.ARROW_RIGHT, Keys.ARROW_LEFT, Keys.ENTER)
        self.assertEqual(self.folders_above_map(), ["Game", largest])
        self.press(Keys.ESCAPE)
        self.assertEqual(self.folders_above_map(), ["Game"])

    def test_totals_take_states_off_the_page(self):
        self.find('#totals tr[data-state="sealed"] input').click()
        self.assert_listed(lambda file: file["state"] == "left out")
        self.find('#totals tr[data-state="hidden"] input').click()
        self.assert_listed(lambda file: file["reason"] not in (None, "hidden"))
        left_out = self.find("#totals tr.sum input")
        self.assertTrue(left_out.get_property("indeterminate"))
        self.save_picture("states-off.png")
        left_out.click()
        left_out.click()
        self.assertEqual(self.find("#files-count").text, "0 files, 0 bytes")
        self.assertEqual(self.find("#map-detail").text, "Nothing of what is shown here has a size.")

    def test_table_is_sorted_and_turned(self):
        def first_bytes():
            return int(self.find("#file-table td:nth-child(2)").text.replace(",", ""))

        sort = self.find('[data-column="bytes"] button')
        sort.click()
        self.assertEqual(first_bytes(), max(file["bytes"] for file in self.files))
        self.assertEqual(self.find('[data-column="bytes"]').get_attribute("aria-sort"), "descending")
        sort.click()
        self.assertEqual(first_bytes(), 0)
        self.find("#page-next").click()
        self.assertEqual(self.find("#page-number").text, f"101\u2013200 of {len(self.files):,}")
        self.find('[data-column="state"] button').click()
        self.assertEqual(self.find("#file-table td:nth-child(3)").text, "sealed")
        self.find("#page-last").click()
        self.assertEqual(self.all("#file-table td:nth-child(3)")[-1].text, "left out: not included")

    def test_colours_follow_the_scheme(self):
        def pictures():
            return self.browser.execute_script(
                "return [...document.querySelectorAll('canvas')].map((canvas) => canvas.toDataURL())")

        wait = WebDriverWait(self.browser, 30)
        light = pictures()
        self.save_picture("desktop-light.png")
        self.set_scheme("dark")
        wait.until(lambda _: all(dark != old for dark, old in zip(pictures(), light)))
        self.save_picture("desktop-dark.png")
        self.set_scheme("light")
        wait.until(lambda _: pictures() == light)

    def test_fits_a_phone(self):
        self.set_size(PHONE)
        self.load()
        for scheme in ("light", "dark"):
            self.set_scheme(scheme)
            self.assertLessEqual(self.browser.execute_script("return document.documentElement.scrollWidth"), PHONE[0])
            self.save_picture(f"phone-{scheme}.png")

    def test_without_scripts_totals_and_warnings_stand(self):
        self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": True})
        try:
            self.load()
            self.assertTrue(self.find("#warnings").is_displayed())
            self.assertTrue(self.find("#totals").is_displayed())
            self.assertFalse(self.find("#map").is_displayed())
            self.assertFalse(self.find("#files").is_displayed())
            self.save_picture("without-scripts.png")
        finally:
            self.browser.execute_cdp_cmd("Emulation.setScriptExecutionDisabled", {"value": False})


if __name__ == "__main__":
    unittest.main()
