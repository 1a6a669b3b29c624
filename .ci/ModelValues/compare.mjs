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
        return value.map(itemText).join(';');
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

// One of several, with a backslash before what would end it.
const itemText = (value) => valueText(value).replace(/[;\\]/g, '\\$&');
const rowItemText = (value) => valueText(value).replace(/[;=\\]/g, '\\$&');

// Where a set has its members. One without any has attributes in place of them, after those of its base classes.
const memberKeys = ['HasProperties', 'Quantities', 'Properties', 'ExtendedProperties'];
const baseKeys = ['expressID', 'type', 'GlobalId', 'OwnerHistory', 'Name', 'Description', 'Material'];

const isReference = (value) => value?.type === webIfc.REF;

const list = (value) => (value === null || value === undefined ? [] : Array.isArray(value) ? value : [value]);

class Values {
    constructor(path) {
        this.model = api.OpenModel(new Uint8Array(readFileSync(path)));
        this.lines = new Map();
        this.sets = new Map();
        this.types = new Map();
        this.declarations = new Map();
        this.materials = new Map();
        this.materialProperties = new Map();
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
        const relate = (keyword, of, to) => {
            for (const relation of this.all(keyword)) {
                list(relation.RelatedObjects).forEach((object) => of.set(object.value, relation[to].value));
            }
        };
        relate('IFCRELDEFINESBYOBJECT', this.declarations, 'RelatingObject');
        relate('IFCRELASSOCIATESMATERIAL', this.materials, 'RelatingMaterial');
        for (const properties of this.all('IFCMATERIALPROPERTIES')) {
            const material = properties.Material.value;
            this.materialProperties.set(material, [...(this.materialProperties.get(material) ?? []), properties]);
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
        const name = (row) => row.slice(0, 3).join('\t');
        const known = new Set();
        const rows = [];
        const shown = (from) => ([, set, property, value]) => [set, property, value, from].map(printable).join('\t');
        for (const [from, members] of [
            ['', this.membersOf(id)],
            ['declaration', this.membersOf(this.declarations.get(id))],
            ['type', this.membersOf(this.types.get(id))],
        ]) {
            const fresh = members.filter((row) => !known.has(name(row)));
            fresh.forEach((row) => known.add(name(row)));
            rows.push(...fresh.map(shown(from)));
        }
        const material = this.materials.get(id) ?? this.materials.get(this.types.get(id));
        for (const part of this.partsOf(material, new Set())) {
            for (const properties of this.materialProperties.get(part) ?? []) {
                const { Name, LayerSetName, constructor } = this.line(part);
                const from = `material ${valueText(Name ?? LayerSetName ?? constructor.name)}`;
                rows.push(...this.membersOfSet(properties).map(shown(from)));
            }
        }
        return rows.sort();
    }

    // A material and all that it is made of.
    partsOf(material, found) {
        if (material !== undefined && !found.has(material)) {
            found.add(material);
            Object.values(this.line(material)).flatMap(list).filter(isReference)
                .forEach((reference) => this.partsOf(reference.value, found));
        }
        return found;
    }

    membersOf(id) {
        return [...(this.sets.get(id) ?? [])].flatMap((set) => this.membersOfSet(this.line(set)));
    }

    membersOfSet(set) {
        const members = [];
        const memberKey = memberKeys.find((key) => key in set);
        if (memberKey === undefined) {
            const given = ([key, value]) => !baseKeys.includes(key) && value !== null && !list(value).some(isReference);
            for (const [key, value] of Object.entries(set).filter(given)) {
                members.push(['property', set.constructor.name, key, valueText(value)]);
            }
        } else {
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
            list(set[memberKey]).forEach((reference) => add('', reference));
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
            return [member.UpperBoundValue, member.LowerBoundValue, member.SetPointValue].map(itemText).join(';')
                .replace(/;+$/, '');
        case webIfc.IFCPROPERTYTABLEVALUE:
            return list(member.DefiningValues)
                .map((value, row) => `${rowItemText(value)}=${rowItemText(list(member.DefinedValues)[row])}`).join(';');
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
