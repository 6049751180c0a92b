// Writing scenario lines: the page sends everything as the scenario language, so values typed
// by the user are quoted the way the scenario lexer reads them back.

// A word stays bare when the lexer would read it back unchanged: no blanks, no quotes, no
// backslash, and not a lone "#" (which would start a comment).
export function quote(text) {
    const value = String(text);
    if (value !== '' && !/[\s"\\]/.test(value) && value !== '#')
        return value;
    return quoted(value);
}

// Always a quoted word, which the parser reads as text ("12" stays a string).
export function quoted(text) {
    return '"' + String(text).replace(/\\/g, '\\\\').replace(/"/g, '\\"').replace(/\n/g, '\\n') + '"';
}

// An option is `key=value`; empty values are left out, so that "omitted" keeps its meaning.
export function option(key, value) {
    if (value === undefined || value === null || value === '')
        return '';
    return key + '=' + quote(value);
}

// Joins words into one line, dropping the empty ones that optional options leave.
export function line(...words) {
    return words.filter((word) => word !== '' && word !== undefined && word !== null).join(' ');
}

// The VALUE of an `expect` line: a string is a quoted word (always read as text), anything else
// compact JSON, which the parser reads from the rest of the line.
export function expectedValue(value) {
    if (typeof value === 'string')
        return quoted(value);
    return JSON.stringify(value);
}

// A number of points as the scenario writes it: at most two decimals, no trailing zeros.
export function points(value) {
    return String(Math.round(value * 100) / 100);
}

// A TIME word for `now` from a datetime-local field ("2026-11-21T09:05" or with seconds).
export function absoluteTime(fieldValue) {
    if (!/^\d{4}-\d\d-\d\dT\d\d:\d\d(:\d\d)?$/.test(fieldValue))
        return null;
    return fieldValue.length === 16 ? fieldValue + ':00' : fieldValue;
}
