// Loads and saves one drawing, printing seconds, MB/s and peak memory for each step, so a script
// can put the figures beside another reader's timing of the same file.

#include "qvad/db/OdDbDatabase.h"
#include "qvad/dxf/dxf_reader.h"
#include "qvad/dxf/dxf_writer.h"

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <sys/resource.h>

namespace {

double peakMegabytes() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

double secondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench_dxf_io IN.dxf OUT.dxf\n");
        return 2;
    }
    double megabytes = static_cast<double>(std::filesystem::file_size(argv[1])) / 1e6;
    auto start = std::chrono::steady_clock::now();
    auto db = qvad::dxf::readDxfFile(argv[1]);
    double load = secondsSince(start);
    double loadPeak = peakMegabytes();

    start = std::chrono::steady_clock::now();
    qvad::dxf::saveDxfFile(*db, argv[2]);
    double save = secondsSince(start);
    double savePeak = peakMegabytes();

    // Formatting alone, without the disk, after the peaks above were taken.
    start = std::chrono::steady_clock::now();
    std::size_t written = qvad::dxf::writeDxf(*db).size();
    double serialize = secondsSince(start);

    std::printf("file_mb %.1f\n", megabytes);
    std::printf("load_s %.3f load_mb_per_s %.0f\n", load, megabytes / load);
    std::printf("serialize_s %.3f serialize_mb_per_s %.0f (%zu bytes)\n", serialize, megabytes / serialize,
                written);
    std::printf("save_s %.3f save_mb_per_s %.0f\n", save, megabytes / save);
    std::printf("peak_after_load_mb %.0f peak_after_save_mb %.0f peak_ratio %.2f\n", loadPeak, savePeak,
                savePeak / megabytes);
    return 0;
}
