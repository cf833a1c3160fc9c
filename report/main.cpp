// kvtg_report: times every kernel of every family next to its peer, prints a
// table of ns per call and the ratio, and writes report.csv with a gnuplot
// script; where gnuplot is installed it also draws report.png.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <string>

#include "call_timer.h"
#include "library_file.h"
#include "report.h"

namespace report {
std::vector<Family>& families()
{
    static std::vector<Family> list;
    return list;
}
}  // namespace report

int main(int argc, char** argv)
{
    const std::string outDir = argc > 1 ? argv[1] : ".";
    std::printf("library file: %s\n", bench::describeLoadedLibrary().c_str());
    auto& list = report::families();
    std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) { return a.order < b.order; });
    std::ofstream csv(outDir + "/report.csv");
    csv << "family,build,size,kvtg_ns,peer_ns,ratio\n";
    // every family once per library file: the baseline and, where this
    // processor runs it, the x86-64-v3 build
    std::vector<bench::LibraryFiles::File> files = {bench::LibraryFiles::Baseline};
    if (bench::LibraryFiles::get().hasVariant())
        files.push_back(bench::LibraryFiles::Variant);
    std::vector<std::string> plotted;
    double logSum = 0;
    int count = 0;
    for (const auto& family : list) {
        for (bench::LibraryFiles::File file : files) {
            report::currentFile() = file;
            const std::string build = bench::LibraryFiles::label(file);
            std::map<std::string, std::vector<double>> ratios;
            for (const report::Case& c : family.cases()) {
                const std::string name = c.family + " " + build;
                if (ratios.find(name) == ratios.end())
                    std::printf("\n%-21s %6s %12s %12s %8s   (peer: %s)\n", name.c_str(), "size", "kvtg ns",
                                "peer ns", "speedup", family.peerName.c_str());
                const double ours = bench::nanosecondsPerCall(c.ours, std::chrono::microseconds(500), 7),
                             theirs = bench::nanosecondsPerCall(c.peer, std::chrono::microseconds(500), 7);
                const double ratio = theirs / ours;
                ratios[name].push_back(ratio);
                std::printf("%-21s %6d %12.2f %12.2f %7.2fx\n", "", c.size, ours, theirs, ratio);
                csv << '"' << c.family << "\"," << build << ',' << c.size << ',' << ours << ',' << theirs << ','
                    << ratio << '\n';
                logSum += std::log(ratio);
                ++count;
            }
            for (const auto& [name, values] : ratios) {
                double s = 0;
                for (double v : values)
                    s += std::log(v);
                std::printf("%-21s geometric mean speedup %.2fx over %zu kernels\n", name.c_str(),
                            std::exp(s / values.size()), values.size());
                plotted.push_back(name);
            }
        }
    }
    std::printf("\nall %d kernel timings (both files): geometric mean speedup %.2fx\n", count,
                count ? std::exp(logSum / count) : NAN);
    csv.close();

    std::ofstream gp(outDir + "/report.gp");
    gp << "set terminal pngcairo size 1400,800\nset output '" << outDir << "/report.png'\n"
       << "set datafile separator ','\nset logscale y 2\nset key outside right\n"
       << "set xlabel 'length or order'\nset ylabel 'speedup over peer (log scale)'\n"
       << "set title 'kvtgen kernels: time of peer / time of kernel'\nset grid\n"
       << "plot 1 with lines dt 2 lc rgb 'black' title 'parity'";
    for (const std::string& name : plotted)
        gp << ", '" << outDir << "/report.csv' using 3:(stringcolumn(1).' '.stringcolumn(2) eq '" << name
           << "' ? $6 : 1/0) with linespoints title '" << name << "'";
    gp << '\n';
    gp.close();
    if (std::system("command -v gnuplot > /dev/null 2>&1") == 0 &&
        std::system(("gnuplot " + outDir + "/report.gp").c_str()) == 0)
        std::printf("wrote %s/report.csv and %s/report.png\n", outDir.c_str(), outDir.c_str());
    else
        std::printf("wrote %s/report.csv and %s/report.gp (install gnuplot for report.png)\n", outDir.c_str(),
                    outDir.c_str());
    return 0;
}
