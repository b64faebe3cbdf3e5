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
const duration = (ns) => scaled(ns, [[1e9, "s"], [1e6, "ms"], [1e3, "µs"], [1, "ns"]]);
const bytes = (value) => scaled(value, [[1e9, "GB"], [1e6, "MB"], [1e3, "KB"], [1, "bytes"]]);
const hopName = (hop) => hop.from + " → " + hop.to;

// --- tables

function element(name, text, className) {
  const result = document.createElement(name);
  if (text !== undefined) result.textContent = text;
  if (className) result.className = className;
  return result;
}

/// Columns: {title, text(row), className}; the first is the row's heading. A text can be an element.
function table(place, caption, columns, rows) {
  const result = element("table");
  result.append(element("caption", caption));
  const head = element("tr");
  for (const column of columns) {
    const cell = element("th", column.title, column.className);
    cell.scope = "col";
    head.append(cell);
  }
  const body = element("tbody");
  for (const row of rows) {
    const line = element("tr");
    columns.forEach((column, i) => {
      const cell = element(i === 0 ? "th" : "td", undefined, column.className);
      if (i === 0) cell.scope = "row";
      cell.append(column.text(row));
      line.append(cell);
    });
    body.append(line);
  }
  const header = element("thead");
  header.append(head);
  result.append(header, body);
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
  const draw = () => {
    node.replaceChildren();
    const plot = new uPlot({width: node.clientWidth || 600, height: 280, ...options()}, values, node);
    const picture = node.querySelector(".u-wrap"); // not the legend, which can be read and clicked
    picture.setAttribute("role", "img");
    picture.setAttribute("aria-label", label);
    return plot;
  };
  charts.push({node, draw, plot: draw()});
}

const axis = (more) => ({stroke: color("--quiet"), grid: {stroke: color("--grid"), width: 1},
                         ticks: {stroke: color("--grid"), width: 1}, ...more});
const line = (label, number, value, more) =>
  ({label, stroke: color("--c" + (1 + number % 9)), width: 1.5, points: {show: false}, dash: number > 8 ? [6, 4] : [],
    value: (plot, it) => it == null ? "–" : value(it), ...more});
const seconds = (plot, it) => it == null ? "–" : it.toFixed(3) + " s";
const cursor = {drag: {x: true, y: false}};

function rateCharts() {
  const {times, series} = data.rates;
  if (times.length === 0) return;
  const [all, ...messages] = series;
  const xAxis = () => axis({label: "seconds from the first message", labelSize: 22, labelFont: "12px system-ui"});
  const yAxis = () => axis({size: 70, values: (plot, ticks) => ticks.map((it) => it == null ? "" : decimal(it))});
  chart("rate-chart", "Messages per second over time, " + decimal(data.all.perSecond) + " on average", () => ({
    title: "All messages per second", cursor, scales: {x: {time: false}, y: {range: (plot, min, max) => [0, max * 1.1]}},
    axes: [xAxis(), yAxis()],
    series: [{label: "time", value: seconds}, line(all.name, 0, decimal, {fill: color("--bar")})],
  }), [times, all.values]);
  chart("message-rate-chart", "Messages per second over time, by message", () => ({
    title: "The most frequent messages per second", height: 320, cursor, scales: {x: {time: false}, y: {distr: 3}},
    axes: [xAxis(), yAxis()],
    series: [{label: "time", value: seconds}, ...messages.map((it, i) => line(it.name, i, decimal))],
  }), [times, ...messages.map((it) => it.values.map((value) => value > 0 ? value : null))]);
}

/// Percentiles stand as far to the right as they are rare: as the logarithm of one message in how many.
function latencyChart(place, title, hops) {
  if (hops.length === 0) return document.getElementById(place).replaceChildren();
  const x = data.latency.percentiles.map((it) => Math.log10(100 / (100 - it)));
  const shown = [0, 50, 90, 99, 99.9, 99.99];
  chart(place, title + ": percentiles of " + hops.map(hopName).join(", "), () => ({
    title, height: 340, cursor: {drag: {x: false, y: false}},
    scales: {x: {time: false}, y: {distr: 3}},
    axes: [
      axis({label: "percent of messages", labelSize: 22, labelFont: "12px system-ui",
            splits: () => shown.map((it) => Math.log10(100 / (100 - it))), values: () => shown.map(String)}),
      axis({size: 70, values: (plot, ticks) => ticks.map((it) => it == null ? "" : duration(it).replace(/\.0+ /, " "))}),
    ],
    series: [{label: "percent", value: (plot, it, i, at) => at == null ? "–" : String(data.latency.percentiles[at])},
             ...hops.map((hop, i) => line(hopName(hop), i, duration))],
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
    series: [{label: "bytes", value: (plot, it) => it == null ? "–" : names[it]},
             {label: "messages", stroke: color("--c1"), fill: color("--c1"), points: {show: false},
              paths: uPlot.paths.bars({size: [0.7, 80]}), value: (plot, it) => it == null ? "–" : count(it)}],
  }), [sizes.map((it, i) => i), sizes.map((it) => it.count)]);
}

// --- the page

function summary() {
  document.title = data.capture + " – capture report";
  document.getElementById("subtitle").textContent = data.capture + (data.first ? ", from " + data.first + " on" : "");
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

function outcomeTable(place, caption, outcomes) {
  const most = Math.max(...outcomes.map((it) => it.orders), 1), all = outcomes.reduce((sum, it) => sum + it.orders, 0);
  table(place, caption, [
    {title: "outcome", className: "text", text: (it) => it.name},
    {title: "orders", text: (it) => count(it.orders)},
    {title: "share", text: (it) => all === 0 ? "–" : (100 * it.orders / all).toFixed(1) + " %"},
    {title: "", className: "share", text: (it) => {
      const bar = element("div");
      bar.style.width = 100 * it.orders / most + "%";
      return it.orders === 0 ? "" : bar;
    }},
  ], outcomes);
}

summary();
rateCharts();
const hops = data.latency.hops.filter((it) => it.values.length !== 0);
latencyChart("latency-in-chart", "Inwards", hops.filter((it) => it.isInwards));
latencyChart("latency-out-chart", "Outwards", hops.filter((it) => !it.isInwards));
table("latency-table", "All messages together", [
  {title: "hop", className: "text", text: hopName},
  {title: "count", text: (it) => count(it.count)},
  ...data.latency.told.map((percent) => ({
    title: "p" + percent,
    text: (it) => it.values.length === 0 ? "–" : duration(it.values[data.latency.percentiles.indexOf(percent)]),
  })),
  {title: "max", text: (it) => it.values.length === 0 ? "–" : duration(it.max)},
  {title: "unset", text: (it) => count(it.unset)},
  {title: "negative", text: (it) => count(it.negative)},
], data.latency.hops);
outcomeTable("orders-table", "Order flow", data.orders);
outcomeTable("new-orders-table", "New-order interface", data.newOrders);
sizeChart();
table("message-table", "By message", [
  {title: "message", className: "text", text: (it) => it.name},
  {title: "count", text: (it) => count(it.count)},
  {title: "bytes", text: (it) => count(it.bytes)},
  {title: "per second", text: (it) => it.perSecond == null ? "–" : decimal(it.perSecond)},
  ...["min", "median", "p99", "max"].map((name) => ({title: name, text: (it) => it.sizes ? count(it.sizes[name]) : "–"})),
], [...data.messages, {name: "all", ...data.all}]);
if (data.faults.count === 0)
  document.getElementById("faults").replaceChildren(element("p", "None: every packet holds a good message."));
else
  table("faults", count(data.faults.count) + (data.faults.count === 1 ? " fault" : " faults")
        + (data.faults.first.length < data.faults.count ? ", the first " + count(data.faults.first.length) : ""), [
    {title: "packet", text: (it) => count(it.packet)},
    {title: "fault", className: "text wide", text: (it) => it.text},
  ], data.faults.first);

// --- what changes while the page is shown

const redraw = () => charts.forEach((it) => { it.plot.destroy(); it.plot = it.draw(); });
dark.addEventListener("change", redraw);
let width = innerWidth;
addEventListener("resize", () => {
  if (innerWidth === width) return;
  width = innerWidth;
  charts.forEach((it) => it.plot.setSize({width: it.node.clientWidth, height: it.plot.height}));
});
document.documentElement.dataset.state = "drawn";
