// A host outside the project: only the installed header and library, numbers against closed forms.
#include <CSectionTools.h>

#include <cmath>
#include <cstdio>

static bool Near(const char* name, double value, double wanted) {
    const bool near = std::fabs(value - wanted) <= 1e-12 * std::fabs(wanted);
    if (!near) std::printf("%s is %.17g, not %.17g\n", name, value, wanted);
    return near;
}

int main() {
    // A hollow rectangle away from the origin; b, h outside, wall t.
    const double b = 0.3, h = 0.5, t = 0.02, x = 4.0, y = -7.0;
    double outer[] = {x, y, x + b, y, x + b, y + h, x, y + h};
    double inner[] = {x + t, y + t, x + b - t, y + t, x + b - t, y + h - t, x + t, y + h - t};
    CSectionTools pushed;
    pushed.PushContour(4, outer, 1);
    pushed.PushContour(4, inner, 0);
    const CSectionTools copy(pushed);
    CSectionTools section;
    section = copy;

    double v[17];
    section.GetCalculValues(0, 0, v, v + 1, v + 2, v + 3, v + 4, v + 5, v + 6, v + 7, v + 8, v + 9,
                            v + 10, v + 11, v + 12, v + 13, v + 14, v + 15, v + 16);
    const double bi = b - 2 * t, hi = h - 2 * t;
    const double iX = (b * h * h * h - bi * hi * hi * hi) / 12;
    bool good = Near("xG", v[1], x + b / 2);
    good &= Near("yG", v[2], y + h / 2);
    good &= Near("area", v[3], b * h - bi * hi);
    // 1e-12 of I is too strict 7 m from the axis, where I about the origin is 7e2 times as large.
    good &= Near("1 + inertia, horizontal axis", 1 + v[7], 1 + iX);
    good &= Near("1 + elastic modulus, bottom", 1 + v[10], 1 + iX / (h / 2));
    return good ? 0 : 1;
}
