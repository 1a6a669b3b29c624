// node compare.mjs ANNOTATE MODEL...
// Reads each model with web-ifc, and compares the values of all its objects with those that annotate shows.
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import webIfc from 'web-ifc';

const api = new webIfc.IfcAPI();
await api.Init();
api.SetLogLevel(webIfc.LogLevel.LOG_LEVEL_OFF);

const escapes = { '\\': '\\\\', '\n': '\\n', '\r': '\\r', '\t': '\\t' };
const printable = (text) => text.replace(/[\\\n\r\t]/g, (character) => escapes[character]);

// JavaScript goes over to exponents below 1e-6 and from 1e21 on, and writes those with one digit.
function numberText(number) {
    const size = Math.abs(number);
    if (size === 0) {
        return '0';
    }
    return size >= 1e-5 && size < 1e15 ? String(number) : number.toExponential().replace(/(e[+-])(\d)$/, '$10$2');
}

function valueText(value) {
    if (value === null || value === undefined) {
        return '';
    }
    if (Array.isArray(value)) {
        return value.map(valueText).join(';');
    }
    const content = typeof value === 'object' ? value.value : value;
    if (typeof content === 'number') {
        return numberText(content);
    }
    if (typeof content === 'boolean') {
        return String(content);
    }
    const isUnknown = value.type === webIfc.ENUM && (content === undefined || content === null);
    return isUnknown ? 'unknown' : String(content ?? '');
}

const list = (value) => (value === null || value === undefined ? [] : Array.isArray(value) ? value : [value]);

class Values {
    constructor(path) {
        this.model = api.OpenModel(new Uint8Array(readFileSync(path)));
        this.lines = new Map();
        this.sets = new Map();
        this.types = new Map();
        for (const relation of this.all('IFCRELDEFINESBYPROPERTIES')) {
            for (const object of list(relation.RelatedObjects)) {
                this.assign(object.value, list(relation.RelatingPropertyDefinition));
            }
        }
        for (const type of this.all('IFCTYPEOBJECT')) {
            this.assign(type.expressID, list(type.HasPropertySets));
        }
        for (const relation of this.all('IFCRELDEFINESBYTYPE')) {
            list(relation.RelatedObjects).forEach((object) => this.types.set(object.value, relation.RelatingType.value));
        }
    }

    all(keyword) {
        const ids = api.GetLineIDsWithType(this.model, webIfc[keyword], true);
        return Array.from({ length: ids.size() }, (_, index) => this.line(ids.get(index)));
    }

    line(id) {
        if (!this.lines.has(id)) {
            this.lines.set(id, api.GetLine(this.model, id));
        }
        return this.lines.get(id);
    }

    assign(object, sets) {
        const all = this.sets.get(object) ?? new Set();
        sets.flatMap((set) => list(set.value)).forEach((set) => all.add(set.value ?? set));
        this.sets.set(object, all);
    }

    // SET, PROPERTY, VALUE and FROM of each, with tabs between them.
    rowsOf(id) {
        const own = this.membersOf(id);
        const names = new Set(own.map((row) => row.slice(0, 3).join('\t')));
        const ofType = this.types.has(id) ? this.membersOf(this.types.get(id)) : [];
        const inherited = ofType.filter((row) => !names.has(row.slice(0, 3).join('\t')));
        const shown = (from) => ([, set, name, value]) => [set, name, value].map(printable).concat(from).join('\t');
        return [...own.map(shown('')), ...inherited.map(shown('type'))].sort();
    }

    membersOf(id) {
        const members = [];
        for (const setId of this.sets.get(id) ?? []) {
            const set = this.line(setId);
            const add = (prefix, reference) => {
                const member = this.line(reference.value);
                const name = prefix + valueText(member.Name);
                const parts = list(member.HasProperties ?? member.HasQuantities);
                if (parts.length > 0) {
                    parts.forEach((part) => add(`${name}.`, part));
                } else {
                    const form = set.Quantities ? 'quantity' : 'property';
                    members.push([form, valueText(set.Name), name, this.contentOf(member)]);
                }
            };
            if (set.type === webIfc.IFCPROPERTYSET || set.type === webIfc.IFCELEMENTQUANTITY) {
                list(set.HasProperties ?? set.Quantities).forEach((reference) => add('', reference));
            }
        }
        return members;
    }

    contentOf(member) {
        switch (member.type) {
        case webIfc.IFCPROPERTYSINGLEVALUE:
            return valueText(member.NominalValue);
        case webIfc.IFCPROPERTYENUMERATEDVALUE:
            return valueText(list(member.EnumerationValues));
        case webIfc.IFCPROPERTYLISTVALUE:
            return valueText(list(member.ListValues));
        case webIfc.IFCPROPERTYBOUNDEDVALUE:
            return [member.UpperBoundValue, member.LowerBoundValue, member.SetPointValue].map(valueText).join(';')
                .replace(/;+$/, '');
        case webIfc.IFCPROPERTYTABLEVALUE:
            return list(member.DefiningValues)
                .map((value, row) => `${valueText(value)}=${valueText(list(member.DefinedValues)[row])}`).join(';');
        case webIfc.IFCPROPERTYREFERENCEVALUE:
            return member.PropertyReference ? valueText(this.line(member.PropertyReference.value).Name) : '';
        default: {
            const measure = Object.keys(member).find((key) => key.endsWith('Value'));
            return valueText(member[measure]);
        }
        }
    }
}

// What annotate shows, by GlobalId, in the form of rowsOf.
function shown(annotate, model) {
    const run = (...command) =>
        execFileSync(annotate, [model, ...command], { encoding: 'utf8', maxBuffer: 2 ** 30 }).split('\n');
    const ids = run('objects').filter((line) => line).map((line) => line.split('\t')[0]);
    const rows = new Map();
    for (let start = 0; start < ids.length; start += 500) {
        let current = [];
        for (const line of run('show', ...ids.slice(start, start + 500))) {
            const cells = line.split('\t');
            if (line.startsWith('GlobalId: ')) {
                current = [];
                rows.set(line.slice('GlobalId: '.length), current);
            } else if (cells.length === 5) {
                current.push([...cells.slice(0, 3), cells[4]].join('\t'));
            }
        }
    }
    return rows;
}

const [annotate, ...models] = process.argv.slice(2);
let differences = 0;
for (const model of models) {
    const values = new Values(model);
    const rowsShown = shown(annotate, model);
    const objects = values.all('IFCOBJECTDEFINITION');
    let count = 0;
    const complain = (id, text) => {
        differences += 1;
        console.log(`${model}: ${id}: ${text}`);
    };
    for (const object of objects) {
        const id = valueText(object.GlobalId);
        const expected = values.rowsOf(object.expressID);
        const found = [...(rowsShown.get(id) ?? [])].sort();
        count += expected.length;
        expected.filter((row) => !found.includes(row)).forEach((row) => complain(id, `is missing: ${row}`));
        found.filter((row) => !expected.includes(row)).forEach((row) => complain(id, `isn't there: ${row}`));
        if (expected.length !== found.length) {
            complain(id, `has ${expected.length} values, not ${found.length}`);
        }
    }
    if (rowsShown.size !== objects.length) {
        complain('all', `has ${objects.length} objects, not ${rowsShown.size}`);
    }
    console.log(`${model}: ${objects.length} objects, ${count} values compared`);
}
process.exit(differences === 0 ? 0 : 1);
