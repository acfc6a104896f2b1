// @ts-check
// What the engine says in the words of its command line, in those of the page.

/** In their order: the last are for what has no words of its own. */
const WORDS = /** @type {[RegExp, string][]} */ ([
    [/; --warping asks for it in a batch/g, ""],
    [/; --unit mm, cm, m or in says which it is/g, "; “Unit of the file” on the left says which it is"],
    [/halvorn-section --list-profiles prints the catalogue/g, "“Catalogue” on the left lists the profiles"],
    [/of which halvorn-section prints the profiles with --list-profiles ?(\S*)/g,
     "of which “Catalogue” on the left lists the profiles"],
    [/ \(see --help\)/g, ""],
    [/, --unit says (\S+?)(?=$|[;,.])/g, ", “Unit of the file” says $1"],
    [/leave out --unit/g, "choose “as it says”"],
    [/say with --unit what its numbers are/g, "choose “Unit of the file” on the left"],
    [/give --unit/g, "choose “Unit of the file” on the left"],
    [/--unit says otherwise/g, "“Unit of the file” on the left says otherwise"],
    [/leave out --layer/g, "read it without a choice of layers"],
    [/name the section's with --layer/g, "tick the section's layers alone on the left"],
    [/name its layers with --layer/g, "tick its layers alone on the left"],
    [/entities on layers that --layer does not name left out/g, "entities on layers that are not ticked left out"],
    [/give --join-tolerance/g, "set “Join gaps up to” on the left to"],
    [/--layer\b/g, "the choice of layers"],
    [/--unit\b/g, "“Unit of the file”"],
    [/--warping\b/g, "the solution of torsion, warping and shear"],
    [/(^|\s)--(?=[a-z])/g, "$1"],
]);

/** @param {string|undefined} text */
export function inPageWords(text) {
    if (!text || !text.includes("--")) return text;
    return WORDS.reduce((words, [pattern, word]) => words.replace(pattern, word), text);
}

/** An answer of the engine with whatever it says in the page's words. @param {any} answer */
export function withPageWords(answer) {
    if (answer === null || typeof answer !== "object") return answer;
    const findings = answer.findings?.map((finding) => ({
        ...finding, problem: inPageWords(finding.problem), mend: inPageWords(finding.mend) }));
    const missing = (value) => ({ ...value, why_missing: inPageWords(value.why_missing) });
    const groups = answer.values?.groups?.map((group) => ({ ...group, values: group.values.map(missing) }));
    return { ...answer, ...(findings && { findings }), ...(groups && { values: { ...answer.values, groups } }),
             ...(answer.stresses && { stresses: answer.stresses.map(missing) }) };
}
