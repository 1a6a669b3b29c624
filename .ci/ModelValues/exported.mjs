// node exported.mjs ANNOTATE MODEL EXPORTED
// Compares the values that hold for each object of a model, as annotate shows the model's and those that were set, with
// those of the exported model, and all lines of the model but those of sets and their assignments byte for byte.
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';

const [annotate, model, exported] = process.argv.slice(2);

// SET, PROPERTY, VALUE and FROM of all that hold for each object, by GlobalId.
function held(path) {
    const run = (...command) =>
        execFileSync(annotate, [path, ...command], { encoding: 'utf8', maxBuffer: 2 ** 30 }).split('\n');
    const ids = run('objects').filter((line) => line).map((line) => line.split('\t')[0]);
    const rows = new Map();
    for (let start = 0; start < ids.length; start += 500) {
        let current = [];
        for (const line of run('show', ...ids.slice(start, start + 500))) {
            const [set, property, value, , from, yours, comparison] = line.split('\t');
            if (line.startsWith('GlobalId: ')) {
                current = [];
                rows.set(line.slice('GlobalId: '.length), current);
            } else if (from !== undefined) {
                const holds = comparison ? yours.replace(/;+$/, '') : value;
                const source = comparison ? comparison.split(', from ')[1] ?? '' : from;
                current.push([set, property, holds, source].join('\t'));
            }
        }
    }
    return rows;
}

const changeable = /=\s*IFC(PROPERTY|REL(DEFINESBY|OVERRIDES)PROPERTIES|\w*(TYPE|STYLE)\()/;
let differences = 0;
const complain = (text) => {
    differences += 1;
    console.log(`${exported}: ${text}`);
};

const lines = readFileSync(model, 'latin1').split('\n');
const exportedLines = readFileSync(exported, 'latin1').split('\n');
const added = exportedLines.length - lines.length;
const end = lines.findLastIndex((line) => line.startsWith('ENDSEC;'));
const kept = [...exportedLines.slice(0, end), ...exportedLines.slice(end + added)];
lines.forEach((line, number) => {
    if (line !== kept[number] && !changeable.test(line)) {
        complain(`line ${number + 1} is another one: ${kept[number]}`);
    }
});

const expected = held(model);
const found = held(exported);
let count = 0;
for (const [id, rows] of expected) {
    const others = (found.get(id) ?? []).sort();
    count += rows.length;
    if (rows.sort().join('\n') !== others.join('\n')) {
        rows.filter((row) => !others.includes(row)).forEach((row) => complain(`${id} is missing: ${row}`));
        others.filter((row) => !rows.includes(row)).forEach((row) => complain(`${id} isn't to have: ${row}`));
    }
}
if (expected.size !== found.size) {
    complain(`has ${found.size} objects, not ${expected.size}`);
}
console.log(`${exported}: ${count} values and ${lines.length} lines compared, ${added} lines added`);
process.exit(differences === 0 ? 0 : 1);
