// @ts-check
// Rounded corners of a ring, as chords that keep the area under the arc.

/** @typedef {[number, number]} Point */

/** A chord turns by at most a 192nd of a full turn, however small the radius. */
const LARGEST_TURN = (2 * Math.PI) / 192;

/** Where the tolerance is lost in the radius a corner takes no more chords. */
const MOST_CHORDS = 10_000;

/** Edges this parallel have no corner between them [rad]. */
const STRAIGHT = 1e-9;

/** A ring with a fillet of its own radius at each corner; 0 leaves it sharp.
 *  @param {Point[]} ring that closes by itself [L]
 *  @param {number[]} radii one per point [L]
 *  @param {number} tolerance largest distance between an arc and its chords [L]
 *  @returns {Point[]}
 *  @throws {RangeError} for fillets that the edges between them have no room for */
export function roundedRing(ring, radii, tolerance) {
    const corners = ring.map((point, index) => cornerOf(ring, index, radii[index] ?? 0));
    corners.forEach((corner, index) => {
        const next = (index + 1) % ring.length;
        const edge = distance(ring[index], ring[next]);
        const taken = corner.tangent + corners[next].tangent;
        if (taken > edge * (1 + 1e-12)) {
            throw new RangeError(
                `The fillets between points ${index + 1} and ${next + 1} take ` +
                    `${rounded(taken)} of an edge of ${rounded(edge)}; choose smaller radii.`,
            );
        }
    });
    return corners.flatMap((corner, index) =>
        corner.tangent > 0 ? arcOf(ring[index], corner, tolerance) : [ring[index]],
    );
}

function rounded(length) {
    return Number(length.toPrecision(4));
}

function distance(a, b) {
    return Math.hypot(b[0] - a[0], b[1] - a[1]);
}

/** How a fillet lies in its corner: the directions to both neighbours, the turn of the outline,
 *  counter-clockwise positive, and the length that it takes of both edges. */
function cornerOf(ring, index, radius) {
    const point = ring[index];
    const back = direction(point, ring[(index + ring.length - 1) % ring.length]);
    const ahead = direction(point, ring[(index + 1) % ring.length]);
    const cross = ahead[0] * back[1] - ahead[1] * back[0];
    const dot = back[0] * ahead[0] + back[1] * ahead[1];
    const turn = Math.atan2(cross, -dot);
    const isSharp = radius <= 0 || Math.abs(turn) < STRAIGHT;
    const tangent = isSharp ? 0 : radius * Math.tan(Math.abs(turn) / 2);
    return { back, ahead, turn, radius, tangent };
}

function direction(from, to) {
    const length = distance(from, to);
    return length > 0 ? [(to[0] - from[0]) / length, (to[1] - from[1]) / length] : [0, 0];
}

/** Both ends of the arc, and between them points a little outside of it, on a circle that makes the
 *  polygon about the centre as large as the sector: with n chords of the angle d and the radii r at
 *  both ends, q between, that is 2 r q + (n - 2) q^2 = n r^2 d / sin d.
 *  @returns {Point[]} */
function arcOf(point, corner, tolerance) {
    const { back, ahead, turn, radius, tangent } = corner;
    const start = [point[0] + back[0] * tangent, point[1] + back[1] * tangent];
    const end = [point[0] + ahead[0] * tangent, point[1] + ahead[1] * tangent];
    const side = Math.sign(turn);
    const centre = [start[0] + side * radius * back[1], start[1] - side * radius * back[0]];
    const chords = chordsOf(Math.abs(turn), radius, tolerance);
    const step = turn / chords;
    const outer = outerRadius(radius, Math.abs(step), chords);
    const first = Math.atan2(start[1] - centre[1], start[0] - centre[0]);
    const points = [/** @type {Point} */ (start)];
    for (let index = 1; index < chords; ++index) {
        const angle = first + index * step;
        points.push([centre[0] + outer * Math.cos(angle), centre[1] + outer * Math.sin(angle)]);
    }
    points.push(/** @type {Point} */ (end));
    return points;
}

function chordsOf(turn, radius, tolerance) {
    const byTolerance = 2 * Math.acos(Math.max(0, 1 - tolerance / radius));
    const chords = Math.ceil(turn / Math.min(LARGEST_TURN, byTolerance));
    return Math.min(Math.max(2, chords), MOST_CHORDS);
}

function outerRadius(radius, step, chords) {
    const wanted = (chords * radius * radius * step) / Math.sin(step);
    if (chords === 2) return wanted / (2 * radius);
    const rest = chords - 2;
    return (-radius + Math.sqrt(radius * radius + rest * wanted)) / rest;
}
