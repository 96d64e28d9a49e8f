// Peak memory of one load, in its own process.
//
// usage: load_memory grid|band|traces SIZE
//
// Prints two numbers of bytes: how far the load raised the process's peak, and the sizes of the
// loaded object and the file.
#include <rfUtils/geo/veltaGEO.h>
#include <rfUtils/trace/traceRssiBuffer.h>

#include <support/mapText.h>
#include <support/scratchFolder.h>

#include <QTextCodec>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <malloc.h>

namespace {

using namespace rfu::bench;

constexpr std::size_t kPoints = 1001;

/// A number of kilobytes in the kernel's status of the process, in bytes.
long long told(const std::string& name) {
    std::ifstream status("/proc/self/status");
    for (std::string key; status >> key; std::getline(status, key)) {
        if (key == name + ':') {
            long long kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    }
    return 0;
}

long long inUse() {
    const struct mallinfo2 info = mallinfo2();
    return static_cast<long long>(info.uordblks + info.hblkhd);
}

/// Resets the peak to the current size.
void forgetPeak() {
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << 5;
}

/// @param load returns the object, which lives until the measurement
template <typename Load>
bool measure(long long fileBytes, Load load) {
    forgetPeak();
    const long long standing = told("VmRSS");
    const long long heap = inUse();
    const auto loaded = load();
    if (loaded == nullptr) {
        return false;
    }
    std::printf("%lld %lld\n", told("VmHWM") - standing, inUse() - heap + fileBytes);
    return true;
}

long long sizeOf(const std::string& name) {
    return static_cast<long long>(std::ifstream(name, std::ios::ate | std::ios::binary).tellg());
}

bool measureGrid(int side) {
    const std::string name = writeScratch("grid.asc", gridText(side));
    return measure(sizeOf(name), [&] {
        auto map = std::make_unique<veltaGEO>();
        return map->loadASCFile(QString::fromStdString(name)) ? std::move(map) : nullptr;
    });
}

bool measureBand(int side) {
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("ISO 8859-1"));
    const std::string name = writeBand(side);
    return measure(sizeOf(name), [&] {
        auto map = std::make_unique<veltaGEO>();
        const QString file = QString::fromStdString(name);
        return map->loadHDRFile(file) && map->loadBILFile(file) ? std::move(map) : nullptr;
    });
}

bool measureTraces(int count) {
    std::vector<double> trace(kPoints, -80.0);
    return measure(0, [&] {
        auto buffer = std::make_unique<traceRssiBuffer>(count, count);
        for (int i = 0; i < count; ++i) {
            buffer->push_back(trace);
        }
        return buffer->calcMarkerPower(0, kPoints / 2) ? std::move(buffer) : nullptr;
    });
}

constexpr struct {
    const char* name;
    bool (*measure)(int size);
} kLoads[] = {{"grid", measureGrid}, {"band", measureBand}, {"traces", measureTraces}};

}  // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        for (const auto& load : kLoads) {
            if (std::string_view(load.name) == argv[1]) {
                return load.measure(std::atoi(argv[2])) ? EXIT_SUCCESS : EXIT_FAILURE;
            }
        }
    }
    std::fprintf(stderr, "usage: load_memory grid|band|traces SIZE\n");
    return EXIT_FAILURE;
}
