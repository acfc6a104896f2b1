// @ts-check
// What can be undone: a list of values, none of which ever changes.

/** @template T @typedef {{past: T[], present: T, future: T[], edit: string}} History
 *  `edit` names the edit that led to the present */

/** How many steps back are kept. */
const STEPS = 300;

/** @template T @param {T} present @returns {History<T>} */
export function historyOf(present) {
    return { past: [], present, future: [], edit: "" };
}

/** @template T @param {History<T>} history @param {T} present
 *  @param {string} edit an edit of the same name as the last one joins it, so that one drag or one
 *         typed number is one step; empty: a step of its own
 *  @returns {History<T>} */
export function edited(history, present, edit = "") {
    if (edit && edit === history.edit) return { ...history, present, future: [] };
    return { past: [...history.past, history.present].slice(-STEPS), present, future: [], edit };
}

/** @template T @param {History<T>} history @returns {History<T>} */
export function undone(history) {
    const { past, present, future } = history;
    if (past.length === 0) return history;
    return { past: past.slice(0, -1), present: past[past.length - 1],
             future: [present, ...future], edit: "" };
}

/** @template T @param {History<T>} history @returns {History<T>} */
export function redone(history) {
    const { past, present, future } = history;
    if (future.length === 0) return history;
    return { past: [...past, present], present: future[0], future: future.slice(1), edit: "" };
}
