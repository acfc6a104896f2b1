#include <CSectionTools.h>

#include <cstdio>

int main() {
    // A concrete T-beam in metres: a flange 1.2 x 0.2 on a web 0.3 x 0.6.
    double outline[] = {0.45, 0.0, 0.75, 0.0, 0.75, 0.6, 1.2,  0.6,
                        1.2,  0.8, 0.0,  0.8, 0.0,  0.6, 0.45, 0.6};
    CSectionTools section;
    section.PushContour(8, outline, 1);  // 1: solid, 0: hole

    double ixx, xG, yG, area, shearY, shearZ, iY, iX, iXY, wt;
    double welBottom, welTop, welLeft, welRight, wplx, wply, extraSum;
    section.GetCalculValues(0.0, 0.0, &ixx, &xG, &yG, &area, &shearY, &shearZ, &iY, &iX, &iXY, &wt,
                            &welBottom, &welTop, &welLeft, &welRight, &wplx, &wply, &extraSum);

    std::printf("area               %.6g m2\n", area);
    std::printf("centre of gravity  (%.6g, %.6g) m\n", xG, yG);
    std::printf("inertia            %.6g m4 about the horizontal axis\n", iX);
    std::printf("elastic moduli     %.6g m3 bottom, %.6g m3 top\n", welBottom, welTop);
    std::printf("plastic modulus    %.6g m3\n", wplx);
}
