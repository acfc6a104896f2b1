// @ts-check
// Where the points of a part lie: mirrored, then turned about their origin, then moved, as section
// files say it.

/** @typedef {[number, number]} Point */

/** Whether the points of a part can be dragged: they are its own, and its place does not hang on
 *  its box or on another part. @param {Record<string, any>} part */
export function hasOwnPoints(part) {
    return Array.isArray(part.points ?? part.wall?.points) && !part.at && !part.on && !part.repeat;
}

/** @param {Record<string, any>} part @returns {Point[]} */
export function ownPoints(part) {
    return part.points ?? part.wall?.points ?? [];
}

/** @param {Record<string, any>} part @param {Point[]} points */
export function withOwnPoints(part, points) {
    return part.wall ? { ...part, wall: { ...part.wall, points } } : { ...part, points };
}

/** @param {Record<string, any>} part @param {Point} own @returns {Point} in the section */
export function placed(part, [x, y]) {
    if (part.mirror === "x") y = -y;
    if (part.mirror === "y") x = -x;
    const [c, s] = turn(part.rotate ?? 0);
    const [dx, dy] = part.move ?? [0, 0];
    return [c * x - s * y + dx, s * x + c * y + dy];
}

/** The inverse of `placed`. @param {Record<string, any>} part @param {Point} point */
export function unplaced(part, point) {
    const [dx, dy] = part.move ?? [0, 0];
    const [c, s] = turn(part.rotate ?? 0);
    const [x, y] = [point[0] - dx, point[1] - dy];
    const own = /** @type {Point} */ ([c * x + s * y, c * y - s * x]);
    if (part.mirror === "x") own[1] = -own[1];
    if (part.mirror === "y") own[0] = -own[0];
    return own;
}

/** Cosine and sine, exact at quarter turns. @param {number} degrees */
export function turn(degrees) {
    const quarters = degrees / 90;
    if (Number.isInteger(quarters)) {
        return [[1, 0], [0, 1], [-1, 0], [0, -1]][((quarters % 4) + 4) % 4];
    }
    const angle = (degrees * Math.PI) / 180;
    return [Math.cos(angle), Math.sin(angle)];
}
