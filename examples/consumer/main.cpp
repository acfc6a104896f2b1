#include <CSectionTools.h>

#include <cstdio>

int main() {
    // A box girder 0.3 m wide and 0.5 m high with walls of 20 mm: a solid and a hole.
    double outer[] = {0.0, 0.0, 0.3, 0.0, 0.3, 0.5, 0.0, 0.5};
    double inner[] = {0.02, 0.02, 0.28, 0.02, 0.28, 0.48, 0.02, 0.48};

    CSectionTools section;
    section.PushContour(4, outer, 1);
    section.PushContour(4, inner, 0);

    double ixx, xG, yG, area, shearY, shearZ, iY, iX, iXY, wt;
    double welBottom, welTop, welLeft, welRight, wplx, wply, extraSum;
    section.GetCalculValues(0.0, 0.0, &ixx, &xG, &yG, &area, &shearY, &shearZ, &iY, &iX, &iXY, &wt,
                            &welBottom, &welTop, &welLeft, &welRight, &wplx, &wply, &extraSum);

    std::printf("area                         %.6g m2\n", area);
    std::printf("centre of gravity            %.6g m, %.6g m\n", xG, yG);
    std::printf("inertia, horizontal axis     %.6g m4\n", iX);
    std::printf("inertia, vertical axis       %.6g m4\n", iY);
    std::printf("elastic modulus, lowest fibre %.6g m3\n", welBottom);
}
