'use strict';
// Shows the data of the page. Texts from logs become text nodes, never markup.
(() => {
  const facts = document.documentElement.dataset;  // what tests ask for
  facts.errors = '0';
  const noteError = text => {
    facts.errors = String(Number(facts.errors) + 1);
    facts.error = text;
  };
  addEventListener('error', event => noteError(event.message));
  addEventListener('securitypolicyviolation', event => noteError(event.violatedDirective));

  const data = JSON.parse(document.getElementById('data').textContent);
  const summary = data.summary;
  const limit = data.gaps.limit_seconds * 1000;
  const timeOf = stamp => (stamp ? Date.parse(stamp.replace(' ', 'T') + 'Z') : NaN);
  const start = timeOf(summary.first) || 0;
  const span = Math.max(1, (timeOf(summary.last) || 0) - start);
  const gaps = data.gaps.gaps.map(
      gap => ({...gap, from: timeOf(gap.begin) - start, to: timeOf(gap.end) - start}));
  let view = [0, span];

  // ---- Texts and elements.

  const byId = id => document.getElementById(id);
  const stampOf = time => new Date(start + time).toISOString().replace('T', ' ').slice(0, 19);
  const clockOf = time => stampOf(time).slice(11);
  const seconds = stamp => (stamp || '').slice(0, 19);
  const short = stamp => (stamp || '').slice(5, 19);  // the year stands in the head
  const plural = (count, noun) => `${count} ${noun}${count === 1 ? '' : 's'}`;
  const two = number => String(number).padStart(2, '0');

  function durationOf(time) {
    const s = Math.floor(time / 1000);
    if (s >= 86400) return `${Math.floor(s / 86400)} d ${two(Math.floor(s / 3600) % 24)} h`;
    if (s >= 3600) return `${Math.floor(s / 3600)} h ${two(Math.floor(s / 60) % 60)} min`;
    if (s >= 60) return `${Math.floor(s / 60)} min ${two(s % 60)} s`;
    return `${(time / 1000).toFixed(3)} s`;
  }

  // "core 3 (00:01:003:0)" of package:module:core:thread.
  function nameAffinity(affinity) {
    const parts = /^\d+:\d+:(\d+):(\d+)$/.exec(affinity);
    if (!parts) return affinity || '(none)';
    return `core ${Number(parts[1])}` + (Number(parts[2]) ? ` thread ${Number(parts[2])}` : '') +
        ` (${affinity})`;
  }
  const nameTest = test => test || '(none)';

  function make(tag, attributes, ...children) {
    const svg = ['svg', 'rect', 'line', 'title'].includes(tag);
    const element =
        svg ? document.createElementNS('http://www.w3.org/2000/svg', tag) : document.createElement(tag);
    for (const [name, value] of Object.entries(attributes || {})) {
      if (name.startsWith('on')) {
        element.addEventListener(name.slice(2), value);
      } else if (value !== undefined && value !== false) {
        element.setAttribute(name, value === true ? '' : value);
      }
    }
    element.append(...children.filter(child => child !== undefined && child !== ''));
    return element;
  }

  // Columns are {title, cell(row), number?, wide?}; those without any text are left out.
  function makeTable(caption, rows, columns, attributes = () => ({})) {
    const texts = rows.map(row => columns.map(column => column.cell(row)));
    const used = columns.map((_, i) => i).filter(i => texts.some(cells => cells[i] !== ''));
    const kind = i => (columns[i].number ? 'number' : columns[i].wide ? undefined : 'nowrap');
    return make(
        'table', {}, make('caption', {}, caption),
        make('thead', {}, make('tr', {}, ...used.map(i => make('th', {scope: 'col', class: kind(i)},
                                                              columns[i].title)))),
        make('tbody', {}, ...rows.map((row, k) => make('tr', attributes(row, k), ...used.map((i, n) =>
            make(n === 0 ? 'th' : 'td', {class: kind(i), scope: n === 0 && 'row'}, texts[k][i]))))));
  }

  // ---- Head and summary.

  const failureCount = summary.tests.reduce((sum, test) => sum + test.failed, 0);
  const shownCount = number => (number ? String(number) : '');

  function showHead() {
    const title = summary.first ? `Test report, ${seconds(summary.first).slice(0, 10)}` : 'Test report';
    document.title = title;
    byId('title').textContent = title;
    const facts = [data.paths.join(', '), plural(summary.files, 'file'), plural(summary.rows, 'row')];
    if (summary.first) {
      facts.push(`${seconds(summary.first)} to ${seconds(summary.last)} (${durationOf(span)})`);
    }
    if (summary.damaged) {
      facts.push(`${plural(summary.damaged, 'damaged place')} (listed by “vexorlog check”)`);
    }
    byId('overview').textContent = facts.join(' · ');
    const first = data.failures[0];
    const failure = first && first.failures[0];
    if (failure) {
      byId('verdict').append(
          make('strong', {class: 'failed'}, plural(failureCount, 'failure') + '.'),
          ` The first: ${nameTest(first.test)} at ${seconds(failure.time).slice(11)}` +
              (failure.iteration ? `, iteration ${failure.iteration}` : '') +
              (failure.affinity ? `, ${nameAffinity(failure.affinity)}` : '') + `: ${first.what}`);
    } else {
      byId('verdict').textContent =
          failureCount ? plural(failureCount, 'failure') + '.' : 'Nothing failed.';
    }
    byId('made-by').textContent = `Made by vexorlog ${data.made_by}.`;
  }

  function showSummary(tests) {
    facts.tests = tests.length;
    if (!tests.length) {
      byId('summary').textContent = 'No test matches the filter.';
      return;
    }
    const silence = test => test.longest_silence ?
        `${durationOf(test.longest_silence.seconds * 1000)} from ` +
            short(test.longest_silence.begin) : '';
    byId('summary').replaceChildren(makeTable(
        plural(tests.length, 'test') + ', by first row' +
            (summary.more_tests ? `; ${summary.more_tests} more are not listed` : ''),
        tests, [
          {title: 'Test', cell: test => nameTest(test.test)},
          {title: 'First row', cell: test => short(test.first)},
          {title: 'Last row', cell: test => short(test.last)},
          {title: 'Duration', number: true, cell: test => durationOf(timeOf(test.last) - timeOf(test.first))},
          {title: 'Rows', number: true, cell: test => String(test.rows)},
          {title: 'Iterations', number: true, cell: test => shownCount(test.iterations)},
          {title: 'Passed', number: true, cell: test => shownCount(test.passed)},
          {title: 'Failed', number: true, cell: test => (test.failed ?
              make('span', {class: 'failed'}, String(test.failed)) : '')},
          {title: 'First failure', cell: test => short(test.first_failure)},
          {title: 'Longest silence', cell: silence},
          {title: 'Restarts', number: true, cell: test => shownCount(test.restarts)},
          {title: 'Log ends', cell: test => test.log},
        ]));
  }

  function showGaps() {
    const place = row => `${row.file}:${row.line}`;
    const text = row => make('span', {}, nameTest(row.test) + (row.note ? `: ${row.note}` : ''),
                             make('br'), make('code', {}, place(row)));
    const limitText = `restarts, and silences longer than ${durationOf(limit)}` +
        (data.gaps.more ? `; ${data.gaps.more} shorter ones are not listed` : '');
    facts.gaps = gaps.length;
    if (!gaps.length) {
      byId('gaps').textContent = `No restart, and no silence longer than ${durationOf(limit)}.`;
      return;
    }
    byId('gaps').replaceChildren(makeTable(limitText, gaps, [
      {title: 'From', cell: gap => short(gap.begin)},
      {title: 'To', cell: gap => short(gap.end)},
      {title: 'Duration', number: true, cell: gap => durationOf(gap.seconds * 1000)},
      {title: 'What', cell: gap => (gap.restart ? 'silence, then a restart' : 'silence')},
      {title: 'Before', wide: true, cell: gap => text(gap.before)},
      {title: 'After', wide: true, cell: gap => text(gap.after)},
    ]));
  }

  // ---- Time line.

  const kinds = ['fail', 'pass', 'none'];
  const kindNames = {fail: 'failed', pass: 'passed', none: 'without a result'};
  const heights = {none: 6, pass: 14, fail: 26};
  const kindOf = ([, , passes, failures]) => (failures ? 'fail' : passes ? 'pass' : 'none');
  const xOf = time => (time - view[0]) / (view[1] - view[0]) * 1000;

  // A bar reaches to the next row unless there is a silence between them, of all or of this test.
  function barsOf(buckets) {
    const bars = [];
    const last = buckets[buckets.length - 1];
    const rows = buckets.reduce((sum, bucket) => sum + bucket[2] + bucket[3] + bucket[4], 0);
    const most = Math.max(limit, 5 * (last[1] - buckets[0][0]) / rows);
    buckets.forEach((bucket, i) => {
      const next = i + 1 < buckets.length ? buckets[i + 1][0] : bucket[1];
      const quiet = next - bucket[1] > most ||
          gaps.some(gap => gap.from >= bucket[0] && gap.to <= next && gap.to > gap.from);
      const to = quiet ? bucket[1] : next;
      const kind = kindOf(bucket);
      const before = bars[bars.length - 1];
      if (before && before.kind === kind && kind !== 'fail' && before.to >= bucket[0]) {
        before.to = to;
        before.counts = before.counts.map((count, k) => count + bucket[k + 2]);
      } else {
        bars.push({kind, from: bucket[0], to, counts: bucket.slice(2)});
      }
    });
    return bars;
  }

  function makeRect(kind, from, to, height, least) {
    const x = Math.max(-5, xOf(from));
    const width = Math.max(least, Math.min(1005, xOf(to)) - x);
    return make('rect', {class: kind, x: x.toFixed(2), y: (28 - height) / 2, height,
                         width: width.toFixed(2)});
  }

  function drawLane(lane) {
    const svg = lane.svg;
    svg.replaceChildren();
    const isSeen = item => item.to >= view[0] && item.from <= view[1];
    for (const gap of gaps.filter(isSeen)) {
      const rect = makeRect('silence', gap.from, gap.to, 28, 1);
      rect.append(make('title', {}, `silence of ${durationOf(gap.to - gap.from)}`));
      svg.append(rect);
      if (gap.restart) {
        const x = xOf(gap.to).toFixed(2);
        svg.append(make('line', {class: 'restart', x1: x, x2: x, y1: 0, y2: 28},
                        make('title', {}, `restart at ${stampOf(gap.to)}`)));
      }
    }
    for (const kind of [...kinds].reverse()) {  // failures are on top
      for (const bar of lane.bars.filter(bar => bar.kind === kind && isSeen(bar))) {
        const isFailure = kind === 'fail';  // a mark, and a thin bar to the next row
        if (isFailure) svg.append(makeRect(kind, bar.from, bar.to, heights.none, 1));
        const rect = makeRect(kind, bar.from, isFailure ? bar.from : bar.to, heights[kind],
                              isFailure ? 3 : 1.2);
        const [passes, failures, others] = bar.counts;
        rect.append(make('title', {}, `${nameTest(lane.test)}, ${stampOf(bar.from)} to ` +
            `${clockOf(bar.to)}: ${failures} failed, ${passes} passed, ${others} without a result`));
        svg.append(rect);
      }
    }
  }

  function describeLane(lane) {
    const sum = i => lane.buckets.reduce((total, bucket) => total + bucket[i], 0);
    const failures = lane.buckets.filter(bucket => bucket[3]);
    return `${nameTest(lane.test)}: from ${stampOf(lane.buckets[0][0])} to ` +
        `${stampOf(lane.buckets[lane.buckets.length - 1][1])}, ${sum(2)} passed, ${sum(3)} failed, ` +
        `${sum(4)} rows ${kindNames.none}` +
        (failures.length ? `; failures at ${failures.slice(0, 10).map(bucket => clockOf(bucket[0])).join(', ')}` +
            (failures.length > 10 ? ' and later' : '') : '');
  }

  function addDragging(svg) {
    let from = null;
    let mark = null;
    const at = event => {
      const box = svg.getBoundingClientRect();
      return Math.min(1, Math.max(0, (event.clientX - box.left) / box.width));
    };
    svg.addEventListener('pointerdown', event => {
      if (event.button !== 0) return;
      from = at(event);
      svg.setPointerCapture(event.pointerId);
      mark = make('rect', {class: 'drag', x: from * 1000, y: 0, width: 0, height: 28});
      svg.append(mark);
    });
    svg.addEventListener('pointermove', event => {
      if (from === null) return;
      const to = at(event);
      mark.setAttribute('x', Math.min(from, to) * 1000);
      mark.setAttribute('width', Math.abs(to - from) * 1000);
    });
    svg.addEventListener('pointerup', event => {
      if (from === null) return;
      const [a, b] = [from, at(event)].sort((x, y) => x - y);
      from = null;
      mark.remove();
      if (b - a > 0.005) {
        const width = view[1] - view[0];
        setView(view[0] + a * width, view[0] + b * width);
      }
    });
    svg.addEventListener('pointercancel', () => { from = null; if (mark) mark.remove(); });
    svg.addEventListener('dblclick', () => setView(0, span));
  }

  function makeLanes() {
    const order = new Map(summary.tests.map((test, i) => [test.test, i]));
    data.lanes.sort((a, b) => order.get(a.test) - order.get(b.test));
    const list = make('div', {role: 'list', 'aria-label': 'Lanes of the tests'});
    for (const lane of data.lanes) {
      lane.bars = barsOf(lane.buckets);
      lane.svg = make('svg', {viewBox: '0 0 1000 28', preserveAspectRatio: 'none', role: 'img',
                              'aria-label': describeLane(lane)});
      addDragging(lane.svg);
      lane.element = make('div', {class: 'lane', role: 'listitem', 'data-test': lane.test},
          make('button', {type: 'button', title: `Show only ${nameTest(lane.test)}`,
                          onclick: () => setFilter(lane.test, byId('filter-text').value)},
               nameTest(lane.test)), lane.svg);
      list.append(lane.element);
    }
    byId('lanes').append(list);
  }

  function drawAxis() {
    const width = view[1] - view[0];
    const steps = [1, 5, 15, 30, 60, 300, 900, 1800, 3600, 7200, 14400, 43200, 86400].map(s => s * 1000);
    const step = steps.find(size => width / size <= 9) ||
        Math.ceil(width / 9 / 86400000) * 86400000;
    const labels = [];
    for (let time = Math.ceil((start + view[0]) / step) * step - start; time <= view[1]; time += step) {
      const stamp = stampOf(time);
      const text = step >= 86400000 || stamp.endsWith('00:00:00') ? stamp.slice(5, 10) :
          step >= 60000 ? stamp.slice(11, 16) : stamp.slice(11);
      const label = make('span', {}, text);
      label.style.left = `${xOf(time) / 10}%`;
      labels.push(label);
    }
    byId('axis').replaceChildren(...labels);
  }

  // ---- The stretch of time that is shown.

  let graphs = [];

  function setView(from, to) {
    const width = Math.min(span, Math.max(1000, to - from));
    from = Math.min(Math.max(0, from), span - width);
    view = [from, from + width];
    data.lanes.forEach(drawLane);
    drawAxis();
    byId('view').textContent = width >= span ? '' :
        `${stampOf(view[0])} to ${clockOf(view[1])} (${durationOf(width)})`;
    const dateWindow = view.map(time => start + time);
    for (const graph of graphs) {
      const shown = graph.xAxisRange();
      if (shown[0] !== dateWindow[0] || shown[1] !== dateWindow[1]) graph.updateOptions({dateWindow});
    }
    facts.view = view.map(Math.round).join(' ');
  }

  function zoom(how) {
    const [from, to] = view;
    const width = to - from;
    if (how === 'in') setView(from + width / 4, to - width / 4);
    if (how === 'out') setView(from - width / 2, to + width / 2);
    if (how === 'earlier') setView(from - width / 2, to - width / 2);
    if (how === 'later') setView(from + width / 2, to + width / 2);
    if (how === 'all') setView(0, span);
  }

  // ---- Failures.

  const kTexts = ['TestType', 'Iter', 'Affinity', 'Scope', 'Result', 'FailCount', 'Request', 'Status',
                  'Notes', 'Level'];  // columns of their own; the others share one

  function makeRows(failure) {
    const rows = failure.rows.map(row => {
      const cells = new Map();
      for (let i = 0; i < row.cells.length; i += 2) {
        cells.set(data.columns[row.cells[i]], row.cells[i + 1]);
      }
      return {place: `${row.file.replace(/.*[/\\]/, '')}:${row.line}`, cells};
    });
    const measured = data.columns.filter(name => name !== 'Time' && !kTexts.includes(name))
        .sort((a, b) => isRate(b) - isRate(a));
    return makeTable(`Rows around ${failure.time || 'it'}`, rows, [
      {title: 'Time', cell: row => (row.cells.get('Time') || '').slice(5)},
      ...kTexts.map(name => ({title: name, cell: row => row.cells.get(name) || '', wide: name === 'Notes'})),
      {title: 'Other columns', wide: true, cell: row => measured.filter(name => row.cells.has(name))
          .map(name => `${name} ${row.cells.get(name)}`).join(', ')},
      {title: 'File and line', cell: row => row.place},
    ], (row, i) => ({class: i === failure.at && 'this', 'aria-current': i === failure.at && 'true'}));
  }

  function makeFailure(failure, isOpen) {
    const own = failure.rows[failure.at];
    const box = make('div', {class: 'wide', tabindex: 0, role: 'region',
                             'aria-label': `Rows around the failure at ${failure.time}`});
    const details = make('details', {ontoggle: fill},
        make('summary', {}, [seconds(failure.time), failure.iteration && `iteration ${failure.iteration}`,
                             failure.affinity && nameAffinity(failure.affinity)]
                                .filter(Boolean).join(', ') + ': ' + failure.what + ' ',
             make('code', {}, `${own.file}:${own.line}`)), box);
    function fill() {  // tables are made when they are seen
      if (details.open && !box.firstChild) box.append(makeRows(failure));
    }
    details.open = isOpen;
    fill();
    return details;
  }

  const textOf = kind => [kind.test, kind.what, ...kind.explained,
      ...kind.failures.map(failure => [failure.time, failure.affinity, nameAffinity(failure.affinity),
                                       failure.what, failure.rows[failure.at].file].join('\n'))]
      .join('\n').toLowerCase();

  function makeFailures() {
    data.failures.forEach((kind, i) => {
      const first = kind.failures[0];
      const more = kind.count - kind.failures.length;
      kind.text = textOf(kind);
      kind.element = make('article', {'data-test': kind.test},
          make('h3', {}, `${nameTest(kind.test)}: ${kind.what}`),
          make('p', {class: 'quiet'}, (kind.count > 1 ? `${kind.count} of this kind, the first ` : 'once, ') +
              (first ? `at ${seconds(first.time)}` : 'without its rows, which would take too much room')),
          kind.explained.length ?
              make('ul', {'aria-label': 'What the error words and codes mean'},
                   ...kind.explained.map(line => make('li', {}, line))) : '',
          ...kind.failures.map((failure, k) => makeFailure(failure, k === 0 && i < 20)),
          more > 0 && first ? make('p', {class: 'quiet'}, `${more} more of this kind are not listed; ` +
              '“vexorlog show --failed” shows all.') : '');
      byId('failure-list').append(kind.element);
    });
  }

  // ---- The filter.

  function setFilter(test, text) {
    byId('filter-test').value = test === '' || data.lanes.some(lane => lane.test === test) ? test : '';
    byId('filter-text').value = text;
    applyFilter();
  }

  function applyFilter() {
    const test = byId('filter-test').value;
    const text = byId('filter-text').value.trim().toLowerCase();
    const hasTest = name => !test || name === test;
    let failures = 0;
    const matching = new Set();  // tests that have a failure with the text
    for (const kind of data.failures) {
      const isShown = hasTest(kind.test) && kind.text.includes(text);
      kind.element.hidden = !isShown;
      if (!isShown) continue;
      failures += kind.count;
      matching.add(kind.test);
    }
    const isShown = name => hasTest(name) && (name.toLowerCase().includes(text) || matching.has(name));
    showSummary(summary.tests.filter(row => isShown(row.test)));
    let lanes = 0;
    for (const lane of data.lanes) {
      lane.element.hidden = !isShown(lane.test);
      lanes += lane.element.hidden ? 0 : 1;
    }
    facts.lanes = lanes;
    facts.failures = failures;
    byId('failures-shown').textContent = !failureCount ? 'Nothing failed.' :
        failures === failureCount ? plural(failures, 'failure') :
        `${failures} of ${plural(failureCount, 'failure')} shown`;
    if (test && test !== byId('plot-test').value && hasSeries(test)) {
      byId('plot-test').value = test;
      choosePlotTest();
    }
    const parts = new URLSearchParams();
    if (test) parts.set('test', test);
    if (text) parts.set('filter', byId('filter-text').value.trim());
    if (location.hash.slice(1) !== String(parts)) location.replace(`#${parts}`);
  }

  // A hash such as "#filter=EC_C6&test=CSTATES&column=C6%25&affinity=00:01:003:0".
  function applyHash() {
    if (location.hash && !location.hash.includes('=')) return;  // a link to a section
    const parts = new URLSearchParams(location.hash.slice(1));
    const given = {column: parts.get('column'), affinity: parts.get('affinity')};
    setFilter(parts.get('test') || '', parts.get('filter') || '');
    for (const [name, value] of Object.entries(given)) {
      if (value === null) continue;
      const select = byId(`plot-${name}`);
      if ([...select.options].some(option => option.value === `=${value}`)) select.value = `=${value}`;
    }
    showPlots();
  }

  // ---- Plots.

  // Told apart by people who see colours differently, on light and on dark.
  const kColours = ['#1f78c8', '#d55e00', '#009e73', '#c65f98', '#9a7b00', '#7b61d1', '#2aa5c0',
                    '#7f7f7f', '#c43c39', '#5f9e2f', '#b07aa1', '#8c6d4f'];
  const kMostLines = kColours.length;
  const isRate = column => column.endsWith('%') || /\(.*Hz\)$/.test(column);
  const hasSeries = test => data.series.some(series => series.test === test);
  const fill = (select, options) => select.replaceChildren(
      ...options.map(([value, text]) => make('option', {value}, text)));
  const unique = list => [...new Set(list)];

  function choosePlotTest() {
    const series = data.series.filter(one => one.test === byId('plot-test').value);
    const columns = unique(series.map(one => one.column))
        .sort((a, b) => isRate(b) - isRate(a) || data.columns.indexOf(a) - data.columns.indexOf(b));
    const common = columns.some(isRate) ? [['rates', 'Rates and frequencies']] : [];
    fill(byId('plot-column'), [...common, ['all', 'All columns'], ...columns.map(name => [`=${name}`, name])]);
    fill(byId('plot-affinity'), [['all', 'All'], ...unique(series.map(one => one.affinity)).sort()
        .map(name => [`=${name}`, nameAffinity(name)])]);
    showPlots();
  }

  function colourOf(name) { return getComputedStyle(document.documentElement).getPropertyValue(name).trim(); }

  // Lines are broken where nothing was logged.
  function rowsOf(lines) {
    const rows = new Map();
    const rowAt = time => {
      if (!rows.has(time)) rows.set(time, [new Date(start + time), ...lines.map(() => null)]);
      return rows.get(time);
    };
    lines.forEach((line, i) => {
      for (let k = 0; k < line.points.length; k += 2) rowAt(line.points[k])[i + 1] = line.points[k + 1];
    });
    for (const gap of gaps) {
      if (gap.to - gap.from < 2) continue;
      const row = rowAt((gap.from + gap.to) / 2);
      for (let i = 1; i < row.length; ++i) if (row[i] === null) row[i] = NaN;
    }
    return [...rows.entries()].sort((a, b) => a[0] - b[0]).map(entry => entry[1]);
  }

  // What the graph holds, not what it was given.
  function measure(graph) {
    let [points, least, most] = [0, Infinity, -Infinity];
    for (let row = 0; row < graph.numRows(); ++row) {
      for (let i = 1; i < graph.numColumns(); ++i) {
        const number = graph.getValue(row, i);
        if (number === null || Number.isNaN(number)) continue;
        ++points;
        least = Math.min(least, number);
        most = Math.max(most, number);
      }
    }
    return {points, least, most};
  }

  const extremesOf = line => {
    const numbers = line.points.filter((_, i) => i % 2);
    return {least: numbers.reduce((a, b) => Math.min(a, b)), most: numbers.reduce((a, b) => Math.max(a, b))};
  };

  function showPlot(test, column, all) {
    const lines = all.slice(0, kMostLines);
    const canvas = make('div', {class: 'canvas'});
    const labels = make('div', {class: 'lines', 'aria-hidden': 'true'});
    const heading = make('h3', {}, column,
        all.length > lines.length ? ` (${lines.length} of ${all.length} cores; choose one above)` : '');
    const picture = make('div', {role: 'img'}, canvas);
    const section = make('div', {class: 'plot', 'data-test': test, 'data-column': column}, heading, labels, picture);
    byId('plots').append(section);
    const nameLine = line => (line.affinity ? nameAffinity(line.affinity) : nameTest(test));
    const graph = new Dygraph(canvas, rowsOf(lines), {
      labels: ['Time', ...lines.map(nameLine)],
      labelsUTC: true,
      labelsDiv: labels,
      labelsKMB: true,
      legend: 'always',
      connectSeparatedPoints: true,
      dateWindow: view.map(time => start + time),
      axisLineColor: colourOf('--line'),
      gridLineColor: colourOf('--line'),
      colors: lines.map((_, i) => kColours[i]),
      strokeWidth: 1.2,
      drawPoints: lines[0].points.length < 400,
      pointSize: 1.6,
      axes: {y: {axisLabelWidth: 60}},
      drawCallback: (drawn, isFirst) => {
        if (isFirst) return;
        const shown = drawn.isZoomed('x') ? drawn.xAxisRange().map(time => time - start) : [0, span];
        if (Math.abs(shown[0] - view[0]) > 1 || Math.abs(shown[1] - view[1]) > 1) setView(...shown);
      },
    });
    graphs.push(graph);
    const held = measure(graph);
    picture.setAttribute('aria-label', `${column} of ${nameTest(test)} over time, ` +
        `${plural(lines.length, 'line')}, from ${held.least} to ${held.most}`);
    Object.assign(section.dataset, {points: held.points, min: held.least, max: held.most,
      lines: lines.length, count: lines.reduce((sum, line) => sum + line.count, 0)});
    section.append(make('details', {}, make('summary', {}, 'Numbers'),
        make('div', {class: 'wide'}, makeTable(`${column} of ${nameTest(test)}`, all, [
          {title: 'Core', cell: line => nameAffinity(line.affinity)},
          {title: 'Count', number: true, cell: line => String(line.count)},
          {title: 'Min', number: true, cell: line => String(extremesOf(line).least)},
          {title: 'Max', number: true, cell: line => String(extremesOf(line).most)},
        ]))));
    return held.points;
  }

  function showPlots() {
    graphs.forEach(graph => graph.destroy());
    graphs = [];
    byId('plots').replaceChildren();
    const test = byId('plot-test').value;
    const column = byId('plot-column').value;
    const affinity = byId('plot-affinity').value;
    const columns = [...byId('plot-column').options].map(option => option.value)
        .filter(value => value.startsWith('=')).map(value => value.slice(1))
        .filter(name => column === 'all' || (column === 'rates' ? isRate(name) : column === `=${name}`));
    let points = 0;
    for (const name of columns) {
      const lines = data.series.filter(series => series.test === test && series.column === name &&
          (affinity === 'all' || affinity === `=${series.affinity}`));
      lines.sort((a, b) => (a.affinity < b.affinity ? -1 : 1));
      if (lines.length) points += showPlot(test, name, lines);
    }
    facts.plots = graphs.length;
    facts.points = points;
    byId('plots-shown').textContent = data.series.length ?
        plural(graphs.length, 'plot') + '. Drag to zoom all, shift and drag to move, double-click to show all.' :
        'No column holds numbers.';
  }

  // ---- Start.

  function choosePlots() {
    const tests = unique(data.series.map(series => series.test));
    const failed = test => summary.tests.some(row => row.test === test && row.failed);
    const rates = test => data.series.some(series => series.test === test && isRate(series.column));
    const first = tests.find(test => failed(test) && rates(test)) || tests.find(rates) || tests[0];
    fill(byId('plot-test'), tests.map(test => [test, nameTest(test)]));
    if (first !== undefined) byId('plot-test').value = first;
  }

  function printAll(isOn) {
    for (const details of document.querySelectorAll('#plots details, article details:first-of-type')) {
      if (isOn && !details.open) {
        details.open = true;
        details.dataset.print = '';
      } else if (!isOn && 'print' in details.dataset) {
        details.open = false;
        delete details.dataset.print;
      }
    }
    if (isOn) graphs.forEach(graph => graph.resize());
  }

  showHead();
  showGaps();
  makeLanes();
  makeFailures();
  choosePlots();
  fill(byId('filter-test'), [['', 'All tests'], ...data.lanes.map(lane => [lane.test, nameTest(lane.test)])]);
  choosePlotTest();
  applyHash();
  setView(0, span);
  facts.series = data.series.length;

  byId('filter').addEventListener('submit', event => event.preventDefault());
  byId('filter').addEventListener('reset', event => {
    event.preventDefault();
    setFilter('', '');
    setView(0, span);
  });
  byId('filter-test').addEventListener('change', applyFilter);
  byId('filter-text').addEventListener('input', applyFilter);
  for (const button of document.querySelectorAll('[data-zoom]')) {
    button.addEventListener('click', () => zoom(button.dataset.zoom));
  }
  byId('plot-test').addEventListener('change', choosePlotTest);
  byId('plot-column').addEventListener('change', showPlots);
  byId('plot-affinity').addEventListener('change', showPlots);
  matchMedia('(prefers-color-scheme: dark)').addEventListener('change', showPlots);
  addEventListener('hashchange', () => {
    if (location.hash.includes('=')) applyHash();
  });
  addEventListener('beforeprint', () => printAll(true));
  addEventListener('afterprint', () => printAll(false));
  facts.requests = performance.getEntriesByType('resource').length;
  facts.images = document.images.length;
  facts.ready = 'true';
})();
