// Builds the page from the data in it. All texts of the capture go through textContent: none of them is ever markup.
"use strict";

const data = JSON.parse(document.getElementById("data").textContent);
const dark = matchMedia("(prefers-color-scheme: dark)");

// --- texts

const count = (value) => value.toLocaleString("en-US");
const decimal = (value) => value.toLocaleString("en-US", {maximumFractionDigits: value < 100 ? 1 : 0});

/// Four digits in the greatest unit that the value reaches; whole numbers in the smallest.
function scaled(value, units) {
  const [size, unit] = units.find(([size]) => Math.abs(value) >= size) || units[units.length - 1];
  const digits = size === 1 ? {} : {minimumSignificantDigits: 4, maximumSignificantDigits: 4};
  return (value / size).toLocaleString("en-US", digits) + " " + unit;
}
const duration = (ns) => scaled(ns, [[31557600e9, "years"], [86400e9, "days"], [3600e9, "h"], [1e9, "s"], [1e6, "ms"],
                                     [1e3, "µs"], [1, "ns"]]);
const bytes = (value) => scaled(value, [[1e9, "GB"], [1e6, "MB"], [1e3, "KB"], [1, "bytes"]]);
const hopName = (hop) => hop.from + " → " + hop.to;
const counted = (value, one) => count(value) + " " + one + (value === 1 ? "" : "s");

// --- times, in the zone in which the capture's are told

const [, sign, hours, minutes] = /([+-])(\d\d):(\d\d)$/.exec(data.first) || ["", "+", 0, 0];
const offset = Number(sign + 1) * (hours * 60 + Number(minutes)) * 60000;
const zone = "UTC" + (offset === 0 ? "" : sign + hours + ":" + minutes);

/// A time in milliseconds since 1970, as exact as `step` asks for.
function clock(time, step) {
  const text = new Date(time + offset).toISOString();
  if (step >= 864e5) return text.slice(0, 10);
  return text.slice(11, step >= 6e4 ? 16 : step >= 1e3 ? 19 : 23);
}
/// "2024-03-04 07:00:00.000"
const dated = (text) => text.replace("T", " ").replace(/(\.\d{3})\d*(Z|[+-]\d\d:\d\d)$/, "$1");
const CLOCK_STEPS = [1, 2, 5, 10, 20, 50, 100, 200, 500, 1e3, 2e3, 5e3, 1e4, 15e3, 3e4, 6e4, 12e4, 3e5, 6e5, 9e5, 18e5, 36e5,
                     72e5, 108e5, 216e5, 432e5, 864e5, 1728e5, 6048e5, 25920e5, 31536e6, 31536e7];

// --- tables

function element(name, text, className) {
  const result = document.createElement(name);
  if (text !== undefined) result.textContent = text;
  if (className) result.className = className;
  return result;
}

// Columns: {title, value(row), text(row), className}; rows are sorted by values, a text can be an element.
const number = (title, value, show = count) =>
  ({title, value, text: (row) => value(row) == null ? "–" : show(value(row))});
const words = (title, value, more = "") => ({title, value, text: value, className: "text " + more});

function lineOf(columns, row) {
  const line = element("tr");
  columns.forEach((column, i) => {
    const cell = element(i === 0 ? "th" : "td", undefined, column.className);
    if (i === 0) cell.scope = "row";
    cell.append(column.text(row));
    line.append(cell);
  });
  return line;
}

/// The first column is the rows' heading. A heading that is clicked sorts by its column, once more turns the order round.
/// Sums stay at the end.
function table(place, caption, columns, rows, sums = []) {
  const result = element("table"), head = element("tr"), body = element("tbody"), foot = element("tfoot");
  const fill = () => body.replaceChildren(...rows.map((row) => lineOf(columns, row)));
  const sort = (cell, {value}) => {
    const isText = rows.some((row) => typeof value(row) === "string");
    const before = cell.getAttribute("aria-sort");
    const isRising = before == null ? isText : before === "descending";
    for (const other of head.children) other.removeAttribute("aria-sort");
    cell.setAttribute("aria-sort", isRising ? "ascending" : "descending");
    const compare = (a, b) => isText ? String(a).localeCompare(String(b), "en", {numeric: true}) : (a ?? -1) - (b ?? -1);
    rows = [...rows].sort((a, b) => (isRising ? 1 : -1) * compare(value(a), value(b)));
    fill();
  };
  for (const column of columns) {
    const cell = element("th", undefined, column.className);
    cell.scope = "col";
    if (column.value) {
      const button = element("button", column.title);
      button.type = "button";
      button.addEventListener("click", () => sort(cell, column));
      cell.append(button);
    }
    head.append(cell);
  }
  fill();
  foot.append(...sums.map((row) => lineOf(columns, row)));
  const header = element("thead");
  header.append(head);
  result.append(element("caption", caption), header, body, foot);
  const scroll = document.getElementById(place);
  scroll.tabIndex = 0; // so that the keyboard can scroll it where it is wider than the page
  scroll.replaceChildren(result);
}

// --- charts

const color = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();
const charts = [];

/// Remembers how to draw a chart, to do it again when colours or width change. `label` is what it shows, for those who
/// cannot see it.
function chart(place, label, options, values) {
  const node = document.getElementById(place);
  const draw = (isPaper = false) => {
    node.replaceChildren();
    const size = {width: node.clientWidth || 600, height: 280}, own = options();
    const plot = new uPlot({...size, ...own, ...(isPaper ? {width: 720, height: 210} : {})}, values, node);
    const picture = node.querySelector(".u-wrap"); // not the legend, which can be read and clicked
    picture.setAttribute("role", "img");
    picture.setAttribute("aria-label", label);
    return plot;
  };
  charts.push({node, draw, plot: draw()});
}

const axis = (more) => ({stroke: color("--quiet"), grid: {stroke: color("--grid"), width: 1},
                         ticks: {stroke: color("--grid"), width: 1}, ...more});
// Lines are told apart without colours, too: on paper, and by those who do not see them.
const DASHES = [[], [9, 4], [2, 3]], MARKERS = ["solid", "dashed", "dotted"], WIDTHS = [1.5, 2.25, 1];
const widthOf = (number) => WIDTHS[Math.floor(number / 3) % 3];
const legend = {markers: {width: (plot, i) => i === 0 ? 0 : 2 * widthOf(i - 1), dash: (plot, i) => MARKERS[(i - 1) % 3]}};
/// `still` is what the legend says of the line while no point of it is pointed at.
const line = (label, number, value, still, more) =>
  ({label, stroke: color("--c" + (1 + number % 9)), width: widthOf(number), points: {show: false}, dash: DASHES[number % 3],
    value: (plot, it, i, at) => at == null ? still : it == null ? "–" : value(it), ...more});
const cursor = {drag: {x: true, y: false}};

function rateCharts() {
  const {times, series} = data.rates;
  if (times.length === 0) return;
  const [all, ...messages] = series;
  const step = times[1] - times[0];
  const when = {label: "time", value: (plot, it) => it == null ? "point at the chart" : clock(it, Math.min(step, 999))};
  const strays = [[data.outOfTime, "at times far from all around"], [data.rates.outside, "outside of the time shown"]];
  document.getElementById("rates-strays").textContent =
    strays.filter(([many]) => many !== 0)
      .map(([many, where]) => "Not in the charts: " + counted(many, "message") + " " + where + ".").join(" ");
  const xAxis = () => axis({label: clock(times[0], 864e5) + ", " + zone, labelSize: 22, labelFont: "12px system-ui", space: 90,
                            incrs: CLOCK_STEPS, values: (plot, ticks, i, space, incr) => ticks.map((it) => clock(it, incr))});
  const rate = (values) => {
    const known = values.filter((it) => it > 0), sum = known.reduce((a, b) => a + b, 0);
    return decimal(sum / values.length) + " on average, " + decimal(Math.max(...known, 0)) + " at most";
  };
  const yAxis = () => axis({size: 70, values: (plot, ticks) => ticks.map((it) => it == null ? "" : decimal(it))});
  chart("rate-chart", "Messages per second over time, " + decimal(data.all.perSecond) + " on average", () => ({
    title: "All messages per second", cursor, legend,
    scales: {x: {time: false}, y: {range: (plot, min, max) => [0, max * 1.1]}},
    axes: [xAxis(), yAxis()],
    series: [when, line(all.name, 0, decimal, rate(all.values), {fill: color("--bar")})],
  }), [times, all.values]);
  chart("message-rate-chart", "Messages per second over time, by message", () => ({
    title: "The most frequent messages per second", height: 320, cursor, legend, scales: {x: {time: false}, y: {distr: 3}},
    axes: [xAxis(), yAxis()],
    series: [when, ...messages.map((it, i) => line(it.name, i, decimal, rate(it.values)))],
  }), [times, ...messages.map((it) => it.values.map((value) => value > 0 ? value : null))]);
}

/// Up to where a chart of hops goes: some times what 99 % of messages take on the slowest of them.
const latencyTop = (hops) =>
  4 * Math.max(1, ...hops.map((it) => it.values[data.latency.percentiles.indexOf(99)]));

function tellSlowest(groups) {
  const beyond = groups.flatMap((hops) => hops.filter((it) => it.max > latencyTop(hops)));
  if (beyond.length !== 0)
    document.getElementById("latency-strays").textContent =
      "Beyond the charts are single times of " + counted(beyond.length, "hop") + ", up to "
      + duration(Math.max(...beyond.map((it) => it.max))) + ": see the greatest in the table.";
}

/// Percentiles stand as far to the right as they are rare: as the logarithm of one message in how many.
function latencyChart(place, title, hops) {
  if (hops.length === 0) return document.getElementById(place).replaceChildren();
  const x = data.latency.percentiles.map((it) => Math.log10(100 / (100 - it)));
  const shown = [0, 50, 90, 99, 99.9, 99.99];
  const at = (hop, percent) => hop.values[data.latency.percentiles.indexOf(percent)];
  // A damaged time is years off, and must not make all others a line at the bottom.
  const highest = latencyTop(hops);
  chart(place, title + ": percentiles of " + hops.map(hopName).join(", "), () => ({
    title, height: 340, cursor: {drag: {x: false, y: false}}, legend,
    scales: {x: {time: false},
             y: {distr: 3, range: (plot, min, max) => uPlot.rangeLog(min, Math.min(max, highest), 10, false)}},
    axes: [
      axis({label: "percent of messages", labelSize: 22, labelFont: "12px system-ui",
            splits: () => shown.map((it) => Math.log10(100 / (100 - it))), values: () => shown.map(String)}),
      axis({size: 70, values: (plot, ticks) => ticks.map((it) => it == null ? "" : duration(it).replace(/\.0+ /, " "))}),
    ],
    series: [{label: "percent",
              value: (plot, it, i, at) => at == null ? "point at the chart" : String(data.latency.percentiles[at])},
             ...hops.map((hop, i) => line(hopName(hop), i, duration,
                                          "half within " + duration(at(hop, 50)) + ", 99 % within " + duration(at(hop, 99))))],
  }), [x, ...hops.map((hop) => hop.values.map((it) => Math.max(it, 1)))]);
}

function sizeChart() {
  const sizes = data.sizes;
  if (sizes.length === 0) return;
  const names = sizes.map((it) => it.low + "–" + it.high);
  chart("size-chart", "Messages by size in bytes: " + sizes.map((it, i) => names[i] + ": " + it.count).join(", "), () => ({
    title: "Messages by size in bytes", height: 240, cursor: {drag: {x: false, y: false}},
    scales: {x: {time: false, range: [-0.6, sizes.length - 0.4]}, y: {range: (plot, min, max) => [0, max * 1.1]}},
    axes: [axis({splits: () => sizes.map((it, i) => i), values: () => names, grid: {show: false}}),
           axis({size: 70, values: (plot, ticks) => ticks.map(count)})],
    series: [{label: "bytes", value: (plot, it) => it == null ? "point at the chart" : names[it]},
             {label: "messages", stroke: color("--c1"), fill: color("--c1"), points: {show: false},
              paths: uPlot.paths.bars({size: [0.7, 80]}),
              value: (plot, it) => it == null ? count(data.all.count) + " in all" : count(it)}],
  }), [sizes.map((it, i) => i), sizes.map((it) => it.count)]);
}

// --- the page

function summary() {
  document.title = data.capture + " – capture report";
  document.getElementById("subtitle").textContent = 
    data.capture + (data.first ? ", " + dated(data.first) + " to " + dated(data.last) + " " + zone : "");
  const facts = [
    ["messages", count(data.all.count)],
    ["bytes", bytes(data.all.bytes)],
    ["time", duration(data.seconds * 1e9)],
    ["messages/s", data.all.perSecond == null ? "–" : decimal(data.all.perSecond)],
    ["orders", count(data.orders.reduce((sum, it) => sum + it.orders, 0))],
    ["faults", count(data.faults.count), data.faults.count === 0 ? "good" : "bad"],
  ];
  for (const [name, value, className] of facts) {
    const fact = element("div");
    fact.append(element("dt", name), element("dd", value, className));
    document.getElementById("summary").append(fact);
  }
}

/// A bar for how many there are of them, of `most`.
const bar = (most) => ({title: "", className: "share", text: (it) => {
  const bar = element("div");
  bar.style.width = 100 * it.orders / most + "%";
  return it.orders === 0 ? "" : bar;
}});
const mostOf = (rows) => Math.max(...rows.map((it) => it.orders), 1);

function outcomeTable(place, caption, outcomes) {
  const all = outcomes.reduce((sum, it) => sum + it.orders, 0);
  table(place, caption, [
    words("outcome", (it) => it.name),
    number("orders", (it) => it.orders),
    number("share", (it) => all === 0 ? null : 100 * it.orders / all, (it) => it.toFixed(1) + " %"),
    bar(mostOf(outcomes)),
  ], outcomes);
}

function totalTable(place, caption, by, rows = []) {
  if (rows.length === 0) return;
  table(place, caption, [
    words(by, (it) => it.name),
    number("orders", (it) => it.orders),
    ...(by === "reason" ? [] : [number("refused", (it) => it.refused), number("traded", (it) => it.traded)]),
    bar(mostOf(rows)),
  ], rows);
}

const hopColumns = [
  words("hop", hopName),
  number("count", (it) => it.count),
  ...data.latency.told.map((percent) =>
    number("p" + percent, (it) => it.values[data.latency.percentiles.indexOf(percent)], duration)),
  number("max", (it) => it.values.length === 0 ? null : it.max, duration),
  number("unset", (it) => it.unset),
  number("negative", (it) => it.negative),
];

function latencies() {
  const hops = data.latency.hops.filter((it) => it.values.length !== 0);
  const inwards = hops.filter((it) => it.isInwards), outwards = hops.filter((it) => !it.isInwards);
  latencyChart("latency-in-chart", "Inwards", inwards);
  latencyChart("latency-out-chart", "Outwards", outwards);
  tellSlowest([inwards, outwards].filter((it) => it.length !== 0));
  table("latency-table", "All messages together", hopColumns, data.latency.hops);
  const p99 = (it) => it.values[data.latency.percentiles.indexOf(99)] ?? -1;
  const slowest = new Map(); // by feed
  for (const hop of [...data.latency.feeds].sort((a, b) => p99(b) - p99(a)))
    if (!slowest.has(hop.feed)) slowest.set(hop.feed, hop);
  if (slowest.size !== 0)
    table("feed-table", "The slowest hop of each feed", [words("feed", (it) => it.feed), ...hopColumns], [...slowest.values()]);
}

function faults() {
  const {count: all, kinds, first} = data.faults;
  if (all === 0) {
    document.getElementById("faults").replaceChildren(element("p", "None: every packet holds a good message."));
    return;
  }
  table("faults", counted(all, "fault"), [
    words("kind", (it) => it.name, "wide"),
    number("count", (it) => it.count),
    number("share", (it) => 100 * it.count / all, (it) => it.toFixed(1) + " %"),
    number("first packet", (it) => it.first),
    number("last packet", (it) => it.last),
  ], kinds);
  table("fault-table", "One by one", [
    number("packet", (it) => it.packet),
    words("time", (it) => dated(it.time)),
    words("fault", (it) => it.text, "wide"),
  ], first);
  const details = document.getElementById("fault-details");
  details.hidden = false;
  details.open = first.length <= 20;
  details.firstElementChild.textContent =
    first.length < all ? "The first " + count(first.length) + " of them" : "Each of them";
}

summary();
rateCharts();
latencies();
outcomeTable("orders-table", "Order flow", data.orders);
outcomeTable("new-orders-table", "New-order interface", data.newOrders);
totalTable("reason-table", "Why orders were turned down or canceled", "reason", data.totals.reason);
totalTable("user-table", "Orders by user", "user", data.totals.user);
totalTable("feed-orders-table", "Orders by feed", "feed", data.totals.feed);
sizeChart();
table("message-table", "By message", [
  words("message", (it) => it.name),
  number("count", (it) => it.count),
  number("bytes", (it) => it.bytes),
  number("per second", (it) => it.perSecond, decimal),
  ...["min", "median", "p99", "max"].map((name) => number(name, (it) => it.sizes && it.sizes[name])),
], data.messages, [{name: "all", ...data.all}]);
faults();

// --- what changes while the page is shown

const redraw = () => charts.forEach((it) => { it.plot.destroy(); it.plot = it.draw(); });
dark.addEventListener("change", redraw);
let width = innerWidth;
addEventListener("resize", () => {
  if (innerWidth === width) return;
  width = innerWidth;
  charts.forEach((it) => it.plot.setSize({width: it.node.clientWidth, height: it.plot.height}));
});
// Paper is narrower than most screens, and white.
const forPaper = (isPaper) => {
  document.documentElement.classList.toggle("printing", isPaper);
  charts.forEach((it) => {
    it.plot.destroy();
    it.plot = it.draw(isPaper);
  });
};
addEventListener("beforeprint", () => forPaper(true));
addEventListener("afterprint", () => forPaper(false));
document.documentElement.dataset.state = "drawn";
