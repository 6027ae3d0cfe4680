"""tavrin-dl's HTML report in headless Chromium, on runs of the example."""

import collections
import csv
import json
import os
import re
import shutil
import subprocess
import time

import pytest
from selenium import webdriver
from selenium.common.exceptions import NoAlertPresentException
from selenium.webdriver.chrome.options import Options
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.support.ui import Select, WebDriverWait

EXAMPLE = os.environ["TAVRIN_EXAMPLE_DIR"]
WORKSPACE = os.path.join(EXAMPLE, "digits.yml")
GREEN = os.path.join(EXAMPLE, "unseen", "green")
# Every fourth held-out digit: all ten classes, in a fraction of the time.
IMAGES = [os.path.join(GREEN, name) for name in sorted(os.listdir(GREEN))][::4]
DATA_ELEMENT = re.compile(r'(<script type="application/json" id="report-data">)(.*?)(</script>)',
                          re.DOTALL)


@pytest.fixture(scope="module")
def browser():
    options = Options()
    # A container has no user namespaces for the sandbox and a small /dev/shm.
    for argument in ("--headless=new", "--no-sandbox", "--disable-dev-shm-usage"):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    driver = webdriver.Chrome(options=options, service=Service(os.environ["TAVRIN_CHROMEDRIVER"]))
    yield driver
    driver.quit()


def tavrin_dl(*arguments):
    subprocess.run([os.environ["TAVRIN_CLI"], *arguments], check=True, capture_output=True)


@pytest.fixture(scope="module")
def run(tmp_path_factory):
    """A run of the images with its CSV and its report."""
    folder = tmp_path_factory.mktemp("run")
    tavrin_dl("run", WORKSPACE, *IMAGES, "--stream", "classify", "--jobs", "2",
              "--csv", str(folder / "run.csv"), "--report", str(folder / "report"))
    return folder


def open_page(browser, page):
    """Opens the page and waits until its script has shown the first cards; the seconds taken."""
    browser.get_log("browser")
    start = time.perf_counter()
    browser.get(page.as_uri())
    WebDriverWait(browser, 60).until(
        lambda driver: driver.execute_script("return document.body.dataset.ready === 'true'"))
    return time.perf_counter() - start


def console_errors(browser):
    return [entry["message"] for entry in browser.get_log("browser") if entry["level"] == "SEVERE"]


def all_card_names(browser):
    """Scrolls until every card the filters let through is in the grid."""
    shown = int(re.match(r"showing (\d+)", browser.find_element(By.ID, "shown").text).group(1))

    def everything_rendered(driver):
        driver.execute_script("window.scrollTo(0, document.body.scrollHeight)")
        return len(driver.find_elements(By.CSS_SELECTOR, "#grid .card")) == shown

    WebDriverWait(browser, 60).until(everything_rendered)
    return browser.execute_script(
        "return [...document.querySelectorAll('#grid .card .name')].map(name => name.textContent)")


def shown_facts(browser):
    return browser.execute_script(
        "return Object.fromEntries([...document.querySelectorAll('#facts div')]"
        ".map(fact => [fact.children[0].textContent, fact.children[1].textContent]))")


def test_the_counts_shown_are_the_csvs(browser, run):
    open_page(browser, run / "report" / "index.html")
    assert console_errors(browser) == []
    with open(run / "run.csv", newline="") as rows:
        rows = list(csv.DictReader(rows))
    expected = collections.Counter((row["tool"], row["answer"] or "(none)") for row in rows)
    shown = browser.execute_script(
        "return [...document.querySelectorAll('#answer-counts tr')].slice(1)"
        ".map(row => [...row.cells].map(cell => cell.textContent))")
    assert {(tool, answer): int(count) for tool, answer, count in shown} == dict(expected)
    assert shown_facts(browser)["images"] == str(len({row["image"] for row in rows}))
    assert sorted(all_card_names(browser)) == sorted(os.path.basename(image) for image in IMAGES)


def test_the_wrong_only_filter_shows_exactly_the_wrong_images(browser, run, tmp_path):
    tavrin_dl("eval", WORKSPACE, *IMAGES, "--stream", "classify", "--report", str(tmp_path))
    with open(run / "run.csv", newline="") as rows:
        wrong = sorted(os.path.basename(row["image"]) for row in csv.DictReader(rows)
                       if row["answer"] != os.path.basename(row["image"]).split("_")[0])
    assert 0 < len(wrong) < len(IMAGES), "the example needs both right and wrong answers here"
    open_page(browser, tmp_path / "index.html")
    assert all_card_names(browser)[:len(wrong)] == wrong, "wrong first, by name"
    Select(browser.find_element(By.ID, "verdict-filter")).select_by_value("wrong")
    assert all_card_names(browser) == wrong
    assert len(browser.find_elements(By.CSS_SELECTOR, "#grid .card.wrong")) == len(wrong)
    assert shown_facts(browser)["wrong"] == str(len(wrong))
    assert console_errors(browser) == []


def test_a_hostile_file_name_shows_as_text_and_runs_nothing(browser, tmp_path):
    names = ["<img src=x onerror=alert(1)>.png", "<img src=x onerror=window.pwned=1>.png"]
    for name in names:
        shutil.copy(IMAGES[0], tmp_path / name)
    tavrin_dl("run", WORKSPACE, *[str(tmp_path / name) for name in names], "--stream",
              "classify", "--report", str(tmp_path / "report"))
    open_page(browser, tmp_path / "report" / "index.html")
    assert sorted(all_card_names(browser)) == sorted(names)
    browser.execute_script("window.scrollTo(0, 0)")
    browser.find_element(By.CSS_SELECTOR, "#grid .card").click()
    assert browser.find_element(By.ID, "detail-name").text.startswith(str(tmp_path))
    with pytest.raises(NoAlertPresentException):
        browser.switch_to.alert.text
    assert browser.execute_script("return window.pwned") is None
    assert browser.execute_script("return document.querySelectorAll('img[src=x]').length") == 0
    assert console_errors(browser) == []


def test_a_report_of_ten_thousand_cards_opens_and_scrolls(browser, run):
    """Measured and told, never held to a time: the run's cards repeated to 10 000."""
    report = run / "report"
    page = (report / "index.html").read_text()
    data = json.loads(DATA_ELEMENT.search(page).group(2))
    cards = data["cards"]
    data["cards"] = [dict(cards[i % len(cards)], name=f"{i:05d}-{cards[i % len(cards)]['name']}")
                     for i in range(10000)]
    embedded = json.dumps(data).replace("<", "\\u003c")
    big = report / "ten-thousand.html"
    big.write_text(DATA_ELEMENT.sub(lambda match: match.group(1) + embedded + match.group(3), page))

    opened = open_page(browser, big)
    assert browser.find_element(By.ID, "shown").text == "showing 10000 of 10000"
    start = time.perf_counter()
    for _ in range(20):
        browser.execute_script("window.scrollBy(0, window.innerHeight)")
    scrolled = time.perf_counter() - start
    start = time.perf_counter()
    Select(browser.find_element(By.ID, "sort")).select_by_value("score-up")
    sorted_in = time.perf_counter() - start
    print(f"\n10000 cards ({big.stat().st_size / 1e6:.1f} MB page): usable after {opened:.2f} s, "
          f"20 screens scrolled in {scrolled:.2f} s, sorted by score in {sorted_in:.2f} s")
    assert console_errors(browser) == []
