// draw_vega.mjs MODULES FOLDER: compiles and renders each plot FOLDER/*.json by the vega and
// vega-lite of a folder of node modules. Writes FOLDER/values.txt: what the transforms of some layers
// give, a row a line, for draw.sh to compare. Exits with 1 when a plot can't be rendered.
import {readdirSync, readFileSync, writeFileSync} from 'node:fs';
import {pathToFileURL} from 'node:url';

const [modules, folder] = process.argv.slice(2);
function load(name) {
  const {main, module, exports} = JSON.parse(readFileSync(`${modules}/${name}/package.json`));
  const entry = exports?.default ?? exports?.['.']?.default ?? module ?? main;
  return import(pathToFileURL(`${modules}/${name}/${entry}`));
}
const vega = await load('vega');
const vegaLite = await load('vega-lite');

function* layersOf(view) {
  for (const key of ['layer', 'vconcat', 'hconcat', 'concat']) {
    for (const inner of view[key] ?? []) yield* layersOf(inner);
  }
  if (view.spec) yield* layersOf(view.spec);
  if (view.mark) yield view;
}

function logger(told) {
  const tell = (...words) => (told.push(words.join(' ')), log);
  const log = {error: tell, warn: () => log, info: () => log, debug: () => log, level: () => log};
  return log;
}

async function viewOf(spec) {
  const told = [];
  const compiled = vegaLite.compile(spec, {logger: logger(told)}).spec;
  const view = new vega.View(vega.parse(compiled), {renderer: 'none', logger: logger(told)});
  const svg = await view.toSVG();
  if (told.length) throw new Error(told[0]);
  return {view, svg, compiled};
}

// The layers whose values are compared: file, element, fields.
const wanted = [
  ['none.clustered-bars.json', 'bars1', ['cityVar', 'modeVar', 'mean_minutes']],
  ['none.histogram.json', 'bars1', ['рост_bin', 'пол', 'sum_вес']],
  ['none.dose-response.json', 'points1', ['dose', 'mean_mort']],
];
const values = [];
let failures = 0;
for (const file of readdirSync(folder).filter(name => name.endsWith('.json'))) {
  try {
    const spec = JSON.parse(readFileSync(`${folder}/${file}`));
    const {svg} = await viewOf(spec);
    if (/NaN|undefined/.test(svg.replace(/<text.*?<\/text>|aria-label="[^"]*"/gs, ''))) {
      throw new Error('a place in the picture is no number');
    }
    for (const [name, element, fields] of wanted.filter(row => row[0] === file)) {
      const layer = [...layersOf(spec)].find(
          layer => layer.description === element && layer.mark.type !== 'text');
      const {view, compiled} = await viewOf({datasets: spec.datasets, ...layer});
      const data = compiled.data.map(set => view.data(set.name))
                       .findLast(rows => rows.length && fields.every(field => field in rows[0]));
      for (const row of data ?? []) {
        values.push([name, ...fields.map(field => row[field])].join('\t'));
      }
    }
  } catch (error) {
    console.log(`${file}: ${error.message}`);
    ++failures;
  }
}
writeFileSync(folder + '/values.txt', values.join('\n') + '\n');
process.exit(failures ? 1 : 0);
