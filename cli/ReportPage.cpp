#include "ReportPage.h"

namespace TavrinCli {
namespace {

const std::string DataMarker = "@REPORT_DATA@";

// The whole page but its data. The script builds everything from the data with textContent and
// attributes, never from HTML text, so that names from outside show as text and run nothing.
// Cards are added a chunk at a time as the grid scrolls, and thumbnails load lazily, so that a
// batch of many thousand images opens at once.
const char* const PageTemplate = R"page(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>tavrin-dl report</title>
<style>
:root { --wrong: #c62828; --right: #2e7d32; --line: #d0d4d8; }
* { box-sizing: border-box; }
body { margin: 0; font: 14px/1.4 system-ui, sans-serif; color: #202428; background: #f4f5f7; }
header, #controls { padding: 12px 20px; background: #fff; border-bottom: 1px solid var(--line); }
h1 { font-size: 20px; margin: 0 0 8px; }
h2 { font-size: 15px; margin: 12px 0 4px; }
.facts { display: flex; flex-wrap: wrap; gap: 6px 28px; margin: 0; }
.facts div { display: flex; gap: 6px; }
.facts dt { color: #5f6368; }
.facts dd { margin: 0; font-weight: 600; }
.tables { display: flex; flex-wrap: wrap; gap: 20px; align-items: flex-start; }
.counts { max-height: 220px; overflow: auto; }
table { border-collapse: collapse; }
td, th { padding: 2px 10px; border-bottom: 1px solid var(--line); text-align: left; }
td.number { text-align: right; font-variant-numeric: tabular-nums; }
pre { margin: 0; font-size: 12px; white-space: pre-wrap; }
.plots img { max-height: 260px; margin-right: 10px; border: 1px solid var(--line); }
#controls { position: sticky; top: 0; z-index: 1; display: flex; flex-wrap: wrap; gap: 16px;
            align-items: center; }
#shown { color: #5f6368; }
#grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(176px, 1fr)); gap: 10px;
        padding: 16px 20px; }
.card { background: #fff; border: 2px solid var(--line); border-radius: 6px; padding: 6px;
        cursor: pointer; content-visibility: auto; contain-intrinsic-size: 176px 250px; }
.card:hover, .card:focus { border-color: #1a73e8; outline: none; }
.card.wrong { border-color: var(--wrong); background: #fff3f3; }
.thumb { height: 160px; display: flex; align-items: center; justify-content: center;
         background: #404040; color: #eee; }
.thumb img { max-width: 100%; max-height: 160px; }
.name { font-weight: 600; overflow-wrap: anywhere; margin-top: 4px; }
.answer { overflow-wrap: anywhere; }
.score, .expected, .error { color: #5f6368; overflow-wrap: anywhere; }
.mark { float: right; font-weight: 700; }
.wrong .mark { color: var(--wrong); }
.right .mark { color: var(--right); }
#more { height: 1px; }
#detail { position: fixed; inset: 0; background: rgba(0, 0, 0, 0.75); display: flex; z-index: 2; }
#detail[hidden] { display: none; }
#detail .panel { margin: auto; background: #fff; display: flex; gap: 16px; padding: 16px;
                 max-width: 96vw; max-height: 94vh; border-radius: 6px; }
#detail .picture { overflow: auto; flex: 0 1 auto; }
#detail .side { display: flex; flex-direction: column; min-width: 320px; max-width: 46vw; }
#detail .side pre { overflow: auto; flex: 1; background: #f4f5f7; padding: 8px; }
#detail button { align-self: flex-end; }
</style>
</head>
<body>
<header>
<h1 id="title"></h1>
<dl class="facts" id="facts"></dl>
<div class="tables">
<div><h2>Answers</h2><div class="counts"><table id="answer-counts"></table></div></div>
<div id="figures" hidden><h2>Figures</h2><pre id="figures-text"></pre></div>
</div>
<div class="plots" id="plots"></div>
</header>
<div id="controls">
<label>Answer <select id="answer-filter"></select></label>
<label id="verdict-control" hidden>Show <select id="verdict-filter">
<option value="all">all</option><option value="wrong">wrong only</option>
<option value="right">right only</option></select></label>
<label>Sort <select id="sort"></select></label>
<span id="shown"></span>
</div>
<main id="grid"></main>
<div id="more"></div>
<div id="detail" hidden>
<div class="panel">
<div class="picture"><img id="detail-image" alt="overlay"></div>
<div class="side">
<button id="detail-close" type="button">Close (Esc)</button>
<h2 id="detail-name"></h2>
<pre id="detail-json"></pre>
</div>
</div>
</div>
<script type="application/json" id="report-data">@REPORT_DATA@</script>
<script>
(function () {
  'use strict';
  const data = JSON.parse(document.getElementById('report-data').textContent);
  const cards = data.cards;
  const withTruth = cards.some(card => 'expected' in card);
  const Chunk = 120;
  const byId = id => document.getElementById(id);
  const grid = byId('grid');
  const more = byId('more');

  function element(tag, className, text) {
    const made = document.createElement(tag);
    if (className) made.className = className;
    if (text !== undefined) made.textContent = text;
    return made;
  }
  const shownAnswer = answer => answer === '' ? '(none)' : answer;
  const answerOf = card => 'error' in card ? '(no answer)'
                         : 'answer' in card ? shownAnswer(card.answer) : '(none)';
  const isWrong = card => card.right === false;

  function addFact(label, value) {
    const fact = element('div');
    fact.append(element('dt', '', label), element('dd', '', String(value)));
    byId('facts').append(fact);
  }

  function addRow(table, cells, header) {
    const row = element('tr');
    for (const cell of cells)
      row.append(element(header ? 'th' : 'td', typeof cell === 'number' ? 'number' : '',
                         String(cell)));
    table.append(row);
  }

  // How often each tool gave each answer, the most frequent first, as the CSV's rows count them.
  function answerCounts() {
    const counts = new Map();
    for (const card of cards)
      for (const answer of card.answers || []) {
        const key = answer.tool + '\u0000' + shownAnswer(answer.answer);
        counts.set(key, (counts.get(key) || 0) + 1);
      }
    return [...counts].map(([key, count]) => [...key.split('\u0000'), count])
      .sort((a, b) => b[2] - a[2] || (a[0] + a[1] < b[0] + b[1] ? -1 : 1));
  }

  function summary() {
    byId('title').textContent = 'tavrin-dl ' + data.command + ': stream ' + data.stream;
    document.title = byId('title').textContent;
    const failed = cards.filter(card => 'error' in card).length;
    addFact('workspace', data.workspace);
    addFact('images', cards.length);
    addFact('without an answer', failed);
    if (withTruth) {
      const wrong = cards.filter(isWrong).length;
      addFact('right', cards.length - wrong);
      addFact('wrong', wrong);
    }
    const perImage = cards.length ? 1000 * data.seconds / cards.length : 0;
    addFact('time per image', perImage.toFixed(1) + ' ms by ' + data.jobs +
            (data.jobs === 1 ? ' job' : ' jobs'));
    const table = byId('answer-counts');
    addRow(table, ['tool', 'answer', 'images'], true);
    for (const row of answerCounts()) addRow(table, row);
    if (data.figures) {
      byId('figures').hidden = false;
      byId('figures-text').textContent = data.figures.text;
      for (const plot of data.figures.plots) {
        const image = element('img');
        image.src = plot;
        image.alt = plot;
        byId('plots').append(image);
      }
    }
  }

  function addOption(select, value, text) {
    const option = element('option', '', text);
    option.value = value;
    select.append(option);
  }

  function controls() {
    const answers = new Map();
    for (const card of cards) answers.set(answerOf(card), (answers.get(answerOf(card)) || 0) + 1);
    const filter = byId('answer-filter');
    addOption(filter, '', 'all (' + cards.length + ')');
    for (const [answer, count] of [...answers].sort((a, b) => b[1] - a[1] || (a[0] < b[0] ? -1 : 1)))
      addOption(filter, answer, answer + ' (' + count + ')');
    const sort = byId('sort');
    if (withTruth) addOption(sort, 'wrong', 'wrong first');
    addOption(sort, 'name', 'name');
    addOption(sort, 'score-down', 'score, highest first');
    addOption(sort, 'score-up', 'score, lowest first');
    byId('verdict-control').hidden = !withTruth;
    for (const id of ['answer-filter', 'verdict-filter', 'sort'])
      byId(id).addEventListener('change', show);
  }

  const byName = (a, b) => cards[a].name < cards[b].name ? -1 : cards[a].name > cards[b].name ? 1 : a - b;
  const scoreOf = index => 'score' in cards[index] ? cards[index].score : -Infinity;
  const orders = {
    wrong: (a, b) => isWrong(cards[b]) - isWrong(cards[a]) || byName(a, b),
    name: byName,
    'score-down': (a, b) => scoreOf(b) - scoreOf(a) || byName(a, b),
    'score-up': (a, b) => scoreOf(a) - scoreOf(b) || byName(a, b),
  };

  let order = [];
  let rendered = 0;

  function cardElement(index) {
    const card = cards[index];
    const made = element('div', 'card' + (isWrong(card) ? ' wrong' : card.right ? ' right' : ''));
    made.dataset.index = index;
    made.tabIndex = 0;
    made.title = card.path;
    const thumb = element('div', 'thumb');
    if (card.thumbnail) {
      const image = element('img');
      image.loading = 'lazy';
      image.alt = '';
      image.src = card.thumbnail;
      thumb.append(image);
    } else {
      thumb.textContent = 'no overlay';
    }
    made.append(thumb);
    if ('right' in card) made.append(element('span', 'mark', card.right ? '\u2713 right' : '\u2717 wrong'));
    made.append(element('div', 'name', card.name), element('div', 'answer', answerOf(card)));
    if ('score' in card) made.append(element('div', 'score', 'score ' + card.score.toFixed(3)));
    if ('expected' in card)
      made.append(element('div', 'expected', 'expected ' + shownAnswer(card.expected) +
                          (card.truth !== card.expected ? ' (' + card.truth + ')' : '')));
    if ('error' in card) made.append(element('div', 'error', card.error));
    return made;
  }

  function renderMore() {
    const end = Math.min(order.length, rendered + Chunk);
    const chunk = document.createDocumentFragment();
    for (; rendered < end; ++rendered) chunk.append(cardElement(order[rendered]));
    grid.append(chunk);
    // The observer tells only of changes: a screen not yet full is filled at once.
    if (rendered < order.length && more.getBoundingClientRect().top < 2 * window.innerHeight)
      requestAnimationFrame(renderMore);
  }

  function show() {
    const answer = byId('answer-filter').value;
    const verdict = withTruth ? byId('verdict-filter').value : 'all';
    order = [];
    cards.forEach((card, index) => {
      if (answer && answerOf(card) !== answer) return;
      if (verdict === 'wrong' && !isWrong(card)) return;
      if (verdict === 'right' && isWrong(card)) return;
      order.push(index);
    });
    order.sort(orders[byId('sort').value]);
    grid.textContent = '';
    rendered = 0;
    byId('shown').textContent = 'showing ' + order.length + ' of ' + cards.length;
    renderMore();
  }

  let opened = -1;
  function open(index) {
    const card = cards[index];
    opened = index;
    const image = byId('detail-image');
    if (card.overlay) image.src = card.overlay; else image.removeAttribute('src');
    byId('detail-name').textContent = card.path;
    const result = card.result || { image: card.path, stream: data.stream, tools: [], error: card.error };
    byId('detail-json').textContent = JSON.stringify(result, null, 2);
    byId('detail').hidden = false;
  }
  function close() {
    byId('detail').hidden = true;
    opened = -1;
  }
  // The neighbour in the grid's order, so that a reviewer steps through the results.
  function step(by) {
    const at = order.indexOf(opened) + by;
    if (at >= 0 && at < order.length) open(order[at]);
  }

  grid.addEventListener('click', event => {
    const card = event.target.closest('.card');
    if (card) open(Number(card.dataset.index));
  });
  byId('detail-close').addEventListener('click', close);
  byId('detail').addEventListener('click', event => { if (event.target === byId('detail')) close(); });
  document.addEventListener('keydown', event => {
    if (event.key === 'Enter' && event.target.classList.contains('card'))
      open(Number(event.target.dataset.index));
    if (opened < 0) return;
    if (event.key === 'Escape') close();
    if (event.key === 'ArrowRight') step(1);
    if (event.key === 'ArrowLeft') step(-1);
  });
  new IntersectionObserver(entries => {
    if (entries.some(entry => entry.isIntersecting) && rendered < order.length) renderMore();
  }, { rootMargin: '600px' }).observe(more);

  summary();
  controls();
  show();
  document.body.dataset.ready = 'true';
})();
</script>
</body>
</html>
)page";

// JSON may hold "</script>" or "<!--" inside its strings, which would end or upset the script
// element around it; written as \u003c, every '<' stays the same character to JSON.parse.
std::string ScriptSafe(const std::string& json) {
    std::string safe;
    safe.reserve(json.size());
    for (const char c : json) {
        if (c == '<')
            safe += "\\u003c";
        else
            safe += c;
    }
    return safe;
}

} // namespace

std::string ReportPage(const nlohmann::json& data) {
    std::string page = PageTemplate;
    const std::string text = data.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    page.replace(page.find(DataMarker), DataMarker.size(), ScriptSafe(text));
    return page;
}

} // namespace TavrinCli
