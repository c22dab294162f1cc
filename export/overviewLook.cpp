#include "export/overviewLook.h"

namespace modExport {

const std::string_view overviewStyle = R"(
:root { color-scheme: light dark; --ink: #1c2430; --soft: #5b6675; --line: #dfe3e8; --page: #fff; --card: #f5f7f9;
  --track: #e9ecf0; --own: #4a7fc1; --rest: #a9b2bd; --link: #1f5fae;
  --c1: #4a7fc1; --c2: #d9813b; --c3: #4f9e6a; --c4: #b8577e; --c5: #8470b8; --c6: #c4a23a; --c7: #3f9aa5; --c8: #96705c; }
@media screen and (prefers-color-scheme: dark) {
  :root { --ink: #e4e8ee; --soft: #9aa6b5; --line: #343c47; --page: #15191f; --card: #1e242c; --track: #2a323c;
    --own: #6a9bd8; --rest: #66707d; --link: #8bb8f0; } }
* { box-sizing: border-box; }
body { margin: 0 auto; padding: 1.5rem 1.25rem 3rem; max-width: 68rem; color: var(--ink); background: var(--page);
  font: 15px/1.45 system-ui, "Segoe UI", Roboto, "Noto Sans", Arial, sans-serif; font-variant-numeric: tabular-nums; }
h1 { margin: 0; font-size: 1rem; font-weight: 600; letter-spacing: .02em; color: var(--soft); }
h2 { margin: 1.25rem 0 .75rem; font-size: 1.6rem; line-height: 1.2; }
h3 { margin: 2rem 0 .5rem; font-size: 1.1rem; }
header p, .note, footer { margin: .25rem 0 .5rem; color: var(--soft); font-size: .87rem; }
section + section { margin-top: 3rem; border-top: 3px double var(--line); }
footer { margin-top: 3rem; border-top: 1px solid var(--line); }
a { color: var(--link); }
bdi { overflow-wrap: anywhere; white-space: pre-wrap; }
.r { text-align: right; white-space: nowrap; }
nav ul { padding-left: 1.2rem; }
.cards { display: grid; grid-template-columns: repeat(auto-fit, minmax(8.5rem, 1fr)); gap: .75rem; margin: 0 0 .75rem; }
.cards div { padding: .7rem .9rem; border: 1px solid var(--line); border-radius: 8px; background: var(--card); }
.cards dt { color: var(--soft); font-size: .85rem; }
.cards dd { margin: 0; font-size: 1.45rem; font-weight: 600; line-height: 1.3; }
.facts { display: grid; grid-template-columns: max-content 1fr; gap: .2rem 1.25rem; margin: 1rem 0; }
.facts dt { color: var(--soft); }
.facts dd { margin: 0; overflow-wrap: anywhere; }
svg { display: block; width: 100%; }
.bar { height: .6rem; border-radius: 3px; background: var(--track); }
.band { height: 2.6rem; margin: .5rem 0; border-radius: 6px; background: var(--rest); }
.band rect { stroke: var(--page); stroke-width: 1px; vector-effect: non-scaling-stroke; }
.band a:hover rect, .band a:focus rect { opacity: .8; }
.own { fill: var(--own); } .rest, .used { fill: var(--rest); }
.c1 { fill: var(--c1); } .c2 { fill: var(--c2); } .c3 { fill: var(--c3); } .c4 { fill: var(--c4); }
.c5 { fill: var(--c5); } .c6 { fill: var(--c6); } .c7 { fill: var(--c7); } .c8 { fill: var(--c8); }
.folders { margin: 0; padding: 0; list-style: none; }
.folders .folders { margin-left: 1.1rem; padding-left: .4rem; border-left: 2px solid var(--line); }
.row { display: grid; grid-template-columns: minmax(0, 1fr) 30% 6.5rem 3.8rem; gap: 0 .9rem; align-items: center;
  padding: .28rem .4rem; border-radius: 5px; }
.row .n { position: relative; padding-left: 1.1rem; }
.other { color: var(--soft); font-style: italic; }
summary { cursor: pointer; list-style: none; }
summary::-webkit-details-marker { display: none; }
summary.row:hover { background: var(--card); }
summary .n::before { content: ""; position: absolute; left: .15rem; top: .38em; border: .32em solid transparent;
  border-left: .42em solid var(--soft); border-right: 0; }
details[open] > summary .n::before { transform: rotate(90deg); }
summary.plain { color: var(--link); }
:focus-visible { outline: 2px solid var(--link); outline-offset: 1px; }
.pair { display: grid; grid-template-columns: 1fr 1fr; gap: 0 2.5rem; }
.pair > div { min-width: 0; }
table { width: 100%; border-collapse: collapse; }
th, td { padding: .3rem .5rem; border-bottom: 1px solid var(--line); text-align: left; vertical-align: top; }
th:first-child, td:first-child { padding-left: 0; }
th.r, td.r { text-align: right; padding-right: 0; padding-left: .9rem; }
thead th { border-bottom: 2px solid var(--line); color: var(--soft); font-size: .87rem; font-weight: 600; white-space: nowrap; }
th button { margin: 0; padding: 0; border: 0; background: none; color: inherit; font: inherit; cursor: pointer; }
th button:hover { color: var(--link); }
th[aria-sort] button::after { content: " \25B2"; font-size: .7em; }
th[aria-sort="descending"] button::after { content: " \25BC"; }
@media screen and (min-width: 900px) { .row { grid-template-columns: minmax(0, 1fr) 22rem 6.5rem 3.8rem; } }
@media screen and (max-width: 760px) { .pair { grid-template-columns: 1fr; } }
@media screen and (max-width: 560px) {
  body { padding: 1rem .8rem 2rem; font-size: 14px; }
  h2 { font-size: 1.3rem; }
  .cards { grid-template-columns: 1fr 1fr; gap: .5rem; }
  .row { grid-template-columns: minmax(0, 1fr) 5.6rem 3.4rem; gap: .1rem .5rem; }
  .row .bar { grid-column: 1 / -1; grid-row: 2; }
  .folders .folders { margin-left: .5rem; padding-left: .2rem; }
  .facts { grid-template-columns: 1fr; gap: 0; }
  .facts dd { margin-bottom: .5rem; }
  th.r, td.r { padding-left: .6rem; }
  td.d { white-space: normal; } }
@media print {
  @page { margin: 14mm; }
  :root { color-scheme: light; }
  body { max-width: none; padding: 0; font-size: 9.5pt; }
  * { print-color-adjust: exact; -webkit-print-color-adjust: exact; }
  h2, h3, h3 + .note { break-after: avoid; }
  tr, .row, .cards, .facts, .band { break-inside: avoid; }
  thead { display: table-header-group; break-inside: avoid; }
  th button::after { content: "" !important; }
  summary .n::before { display: none; }
  td, th { padding-top: 1.5pt; padding-bottom: 1.5pt; }
  a { color: inherit; text-decoration: none; } }
)";

// A click on a header sorts by its column, numbers with the largest first; another click turns the order.
const std::string_view overviewScript = R"('use strict';
document.querySelectorAll('table').forEach(function (table) {
  var body = table.tBodies[0];
  var headers = Array.from(table.tHead.rows[0].cells);
  headers.forEach(function (header, column) {
    var button = document.createElement('button');
    button.type = 'button';
    button.textContent = header.textContent;
    header.textContent = '';
    header.appendChild(button);
    var numeric = header.classList.contains('r');
    var key = function (row) {
      var cell = row.cells[column];
      return numeric ? Number(cell.getAttribute('data-v')) : cell.textContent;
    };
    button.addEventListener('click', function () {
      var order = header.getAttribute('aria-sort');
      var up = order ? order === 'descending' : !numeric;
      headers.forEach(function (each) { each.removeAttribute('aria-sort'); });
      header.setAttribute('aria-sort', up ? 'ascending' : 'descending');
      var rows = Array.from(body.rows).map(function (row) { return [key(row), row]; });
      rows.sort(function (a, b) {
        var order = numeric ? a[0] - b[0] : a[0].localeCompare(b[0], undefined, { numeric: true });
        return up ? order : -order;
      });
      rows.forEach(function (row) { body.appendChild(row[1]); });
    });
  });
});
function openTarget() {
  var target = document.getElementById(location.hash.slice(1));
  for (var each = target; each; each = each.parentElement) {
    if (each.localName === 'details') { each.open = true; }
  }
  if (target) { (target.closest('details') || target).scrollIntoView({ block: 'nearest' }); }
}
addEventListener('hashchange', openTarget);
openTarget();
)";

// The digests are SHA-256, in base 64. A test says what they must be when the two have been changed.
const std::string_view overviewPolicy =
    "default-src 'none'; script-src 'sha256-8PfAFCSS3ts0+4cELuHwAyxArfmk1VKeQM6aSKr0ROA='; "
    "style-src 'sha256-KpH9sWFMQPMEwNeJeLzARZa7E3V6HRXpST2gVVkboRs='; base-uri 'none'; form-action 'none'";

} // namespace modExport
