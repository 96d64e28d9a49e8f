#include <rfUtils/units/HMath.h>

#include <cstdio>

int main() {
    HMath math;
    for (const double level : {-30.0, 0.0, 20.0}) {
        const QString text = math.getdBmToUnit("dBuV", level, true);
        std::printf("%.1f dBm = %s\n", level, qPrintable(text));
    }
    return 0;
}
