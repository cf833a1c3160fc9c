// kvtg_report: times every kernel of every family next to its peer, in each
// file of the library, prints a table of ns per call and the ratio, and writes
// report.csv with a gnuplot script; where gnuplot is installed it also draws
// report.png, one panel per family.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "call_timer.h"
#include "geometric_mean.h"
#include "library_files.h"
#include "report.h"

namespace report {
std::vector<Family>& families()
{
    static std::vector<Family> list;
    return list;
}
}  // namespace report

namespace {

struct Options {
    std::string outDir = ".";
    std::set<std::string> families;  // empty: all
    int rounds = 7;
};

void usage(FILE* to)
{
    std::fprintf(to,
                 "usage: kvtg_report [options] [output folder]\n"
                 "Times every kernel of each library file (the baseline and, where this processor runs it,\n"
                 "the x86-64-v3 build) next to its peer and writes report.csv, report.gp and, with gnuplot,\n"
                 "report.png into the output folder (default: the current folder).\n"
                 "  --families LIST   comma-separated families to time (default all):");
    for (const auto& family : report::families())
        std::fprintf(to, " %s", family.key.c_str());
    std::fprintf(to,
                 "\n"
                 "  --rounds N        timed rounds of 500 us per kernel, the fastest kept (default 7)\n"
                 "  --help            this text\n");
}

bool parse(int argc, char** argv, Options& options)
{
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--help" || arg == "-h") {
            usage(stdout);
            std::exit(0);
        } else if (arg == "--families" && i + 1 < argc) {
            std::stringstream list(argv[++i]);
            for (std::string key; std::getline(list, key, ',');) {
                const auto& all = report::families();
                if (std::none_of(all.begin(), all.end(), [&](const auto& f) { return f.key == key; })) {
                    std::fprintf(stderr, "kvtg_report: unknown family %s\n", key.c_str());
                    return false;
                }
                options.families.insert(key);
            }
        } else if (arg == "--rounds" && i + 1 < argc) {
            options.rounds = std::atoi(argv[++i]);
            if (options.rounds < 1)
                return false;
        } else if (!arg.empty() && arg[0] != '-') {
            options.outDir = arg;
        } else {
            return false;
        }
    }
    return true;
}

// Bytes of machine code per family in one library file, from its symbol
// table: local functions follow the symbol of the unit they come from, the
// others carry the family in their names.
std::map<std::string, long> codeSizeByFamily(const std::string& path)
{
    const auto familyOf = [](const std::string& name) -> std::string {
        if (name.find("CToC") != std::string::npos || name.rfind("pgendftfwd32fc", 0) == 0 ||
            name.rfind("pgendftinv32fc", 0) == 0 || name.rfind("pgendftfwd64fc", 0) == 0 ||
            name.rfind("pgendftinv64fc", 0) == 0)
            return "complex";
        if (name.find("Hartley") != std::string::npos || name.rfind("pgenhartley", 0) == 0)
            return "hartley";
        if (name.find("RTo") != std::string::npos || name.find("ToR") != std::string::npos ||
            name.rfind("pgendft", 0) == 0)
            return "real";
        // the hand-written parts are in the namespaces wht and dct4
        if (name.find("WHT") != std::string::npos || name.rfind("pgenwht", 0) == 0 ||
            name.find("3wht") != std::string::npos)
            return "wht";
        if (name.find("DCT4") != std::string::npos || name.find("EnvList") != std::string::npos ||
            name.find("4dct4") != std::string::npos || name.rfind("owngenautolib", 0) == 0)
            return "dct4";
        return "";
    };
    std::map<std::string, long> sizes;
    FILE* pipe = popen(("readelf -sW '" + path + "' 2>/dev/null").c_str(), "r");
    if (pipe == nullptr)
        return sizes;
    char line[4096];
    std::string unitFamily;
    bool symtab = false;
    while (std::fgets(line, sizeof line, pipe)) {
        if (std::strstr(line, "Symbol table '.symtab'"))
            symtab = true;
        std::istringstream fields(line);
        std::string index, value, type, bind, visibility, section, name;
        long size = 0;
        if (!symtab || !(fields >> index >> value >> size >> type >> bind >> visibility >> section >> name))
            continue;
        if (type == "FILE") {
            unitFamily = familyOf(name);
        } else if (type == "FUNC" && size > 0) {
            const std::string byName = familyOf(name);
            const std::string family = !byName.empty() ? byName : bind == "LOCAL" ? unitFamily : "";
            if (!family.empty())
                sizes[family] += size;
        }
    }
    pclose(pipe);
    return sizes;
}

// One panel of the picture: the series whose family names start with one of
// the prefixes, over the panel's own x axis.
struct Panel {
    const char* title;
    std::vector<std::string> prefixes;
    const char* xlabel;
    const char* x;  // gnuplot expression of the x value from the size column
    const char* xrange;
};
const Panel panels[] = {
    {"complex DFT", {"DFT Fwd ", "DFT Inv "}, "length", "$3", "[1:65]"},
    {"real DFT (CCS)", {"DFT RTo", "DFT CCSTo"}, "length", "$3", "[1:65]"},
    {"Hartley", {"Hartley "}, "length", "$3", "[1:65]"},
    {"Walsh-Hadamard", {"WHT "}, "order", "$3", "[0.5:13.5]"},
    {"DCT-IV", {"DCT-IV "}, "log2 N", "log($3)/log(2)", "[0.5:*]"},
    {"batch complex DFT, per transform of 256", {"Batch Fwd ", "Batch Inv "}, "length", "$3", "[1:65]"},
    {"batch real DFT (CCS), per transform of 256", {"Batch RTo", "Batch CCSTo"}, "length", "$3", "[1:65]"},
    {"batch Hartley, per transform of 256", {"Batch Hartley "}, "length", "$3", "[1:65]"},
};

bool inPanel(const Panel& panel, const std::string& name)
{
    return std::any_of(panel.prefixes.begin(), panel.prefixes.end(),
                       [&](const std::string& prefix) { return name.rfind(prefix, 0) == 0; });
}

void writePlot(const std::string& outDir, const std::vector<std::pair<std::string, std::string>>& series)
{
    std::ofstream gp(outDir + "/report.gp");
    gp << "set terminal pngcairo size 1800,1600 font ',11'\nset output '" << outDir << "/report.png'\n"
       << "set datafile separator ','\nset logscale y 2\nset grid\nset key below horizontal font ',9'\n"
       << "set ylabel 'speedup over peer (log scale)'\n"
       << "set multiplot layout 3,3 title 'kvtgen: time of peer / time of kernel; sse2 = baseline file, avx2 = "
          "x86-64-v3 file'\n";
    for (const Panel& panel : panels) {
        std::vector<std::pair<std::string, std::string>> mine;
        for (const auto& s : series)
            if (inPanel(panel, s.first))
                mine.push_back(s);
        if (mine.empty())
            continue;
        gp << "set title '" << panel.title << "'\nset xlabel '" << panel.xlabel << "'\nset xrange "
           << panel.xrange << "\nplot 1 with lines dt 2 lw 2 lc rgb 'black' title 'parity'";
        // one colour per precision and direction; the baseline dotted, the x86-64-v3 file solid
        std::vector<std::string> names;
        for (const auto& [name, build] : mine) {
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.push_back(name);
            const long colour = std::find(names.begin(), names.end(), name) - names.begin() + 1;
            gp << ", '" << outDir << "/report.csv' using (" << panel.x << "):(stringcolumn(1) eq '" << name
               << "' && stringcolumn(2) eq '" << build << "' ? $6 : 1/0) with linespoints lc " << colour
               << (build == "sse2" ? " pt 6 ps 0.6 dt 3" : " pt 7 ps 0.6 lw 1.5") << " title '" << name << " "
               << build << "'";
        }
        gp << '\n';
    }
    gp << "unset multiplot\n";
}

// The bytes of code of each family in each file; the families of another
// library file (the batch library) are left out.
void printCodeSizes(const std::vector<report::Family>& list, const std::vector<bench::LibraryFiles::File>& files)
{
    std::printf("\ncode size per family, bytes of functions\n%-10s", "family");
    for (auto file : files)
        std::printf(" %12s", bench::LibraryFiles::label(file));
    std::printf("\n");
    std::map<bench::LibraryFiles::File, std::map<std::string, long>> sizes;
    for (auto file : files)
        sizes[file] = codeSizeByFamily(bench::LibraryFiles::get().path(file));
    for (const auto& family : list) {
        if (sizes[files[0]][family.key] == 0)
            continue;
        std::printf("%-10s", family.key.c_str());
        for (auto file : files)
            std::printf(" %12ld", sizes[file][family.key]);
        std::printf("\n");
    }
}

// Writes the gnuplot script and, where gnuplot is installed, the picture.
void drawPlot(const std::string& out, const std::vector<std::pair<std::string, std::string>>& series)
{
    writePlot(out, series);
    if (std::system("command -v gnuplot > /dev/null 2>&1") == 0 &&
        std::system(("gnuplot '" + out + "/report.gp'").c_str()) == 0)
        std::printf("wrote %s/report.csv and %s/report.png\n", out.c_str(), out.c_str());
    else
        std::printf("wrote %s/report.csv and %s/report.gp (install gnuplot-nox for report.png)\n", out.c_str(),
                    out.c_str());
}

}  // namespace

int main(int argc, char** argv)
{
    auto& list = report::families();
    std::sort(list.begin(), list.end(), [](const auto& a, const auto& b) { return a.order < b.order; });
    Options options;
    if (!parse(argc, argv, options)) {
        usage(stderr);
        return 2;
    }
    // the output folder is made first: a report that cannot be written is
    // refused before a minute of timing, not after it
    std::error_code made;
    std::filesystem::create_directories(options.outDir, made);
    if (made || !std::filesystem::is_directory(options.outDir)) {
        std::fprintf(stderr, "kvtg_report: cannot make the output folder %s: %s\n", options.outDir.c_str(),
                     made ? made.message().c_str() : "a file of that name is in the way");
        return 2;
    }
    std::printf("%s", bench::describeMachineAndLibrary().c_str());

    // every family once per library file: the baseline and, where this
    // processor runs it, the x86-64-v3 build
    const std::vector<bench::LibraryFiles::File> files = bench::LibraryFiles::get().files();
    printCodeSizes(list, files);

    std::ofstream csv(options.outDir + "/report.csv");
    if (!csv) {
        std::fprintf(stderr, "kvtg_report: cannot write %s/report.csv\n", options.outDir.c_str());
        return 2;
    }
    csv << "family,build,size,kvtg_ns,peer_ns,ratio\n";
    std::vector<std::pair<std::string, std::string>> series;
    std::map<std::string, std::vector<double>> byBuild;
    const auto round = std::chrono::microseconds(500);
    for (const auto& family : list) {
        if (!options.families.empty() && options.families.count(family.key) == 0)
            continue;
        for (bench::LibraryFiles::File file : files) {
            report::currentFile() = file;
            const std::string build = bench::LibraryFiles::label(file);
            std::map<std::string, std::vector<double>> ratios;
            for (const report::Case& c : family.cases()) {
                const std::string name = c.family + " " + build;
                if (ratios.find(name) == ratios.end()) {
                    std::printf("\n%-21s %6s %12s %12s %8s   (peer: %s)\n", name.c_str(), "size", "kvtg ns",
                                "peer ns", "speedup", family.peerName.c_str());
                    series.push_back({c.family, build});
                }
                const double ours = bench::nanosecondsPerCall(c.ours, round, options.rounds) / c.transforms,
                             theirs = bench::nanosecondsPerCall(c.peer, round, options.rounds) / c.transforms;
                const double ratio = theirs / ours;
                ratios[name].push_back(ratio);
                // the batch library's "loop" series compare it with this library, not with a peer
                if (c.family.size() < 5 || c.family.compare(c.family.size() - 5, 5, " loop") != 0)
                    byBuild[build].push_back(ratio);
                std::printf("%-21s %6d %12.2f %12.2f %7.2fx\n", "", c.size, ours, theirs, ratio);
                csv << '"' << c.family << "\"," << build << ',' << c.size << ',' << ours << ',' << theirs << ','
                    << ratio << '\n';
            }
            for (const auto& [name, values] : ratios)
                std::printf("%-21s geometric mean speedup %.2fx over %zu kernels, lowest %.2fx\n", name.c_str(),
                            bench::geometricMean(values), values.size(), *std::min_element(values.begin(), values.end()));
        }
    }
    std::printf("\n");
    for (const auto& [build, values] : byBuild)
        std::printf("%s: %zu kernels, geometric mean speedup %.2fx\n", build.c_str(), values.size(),
                    bench::geometricMean(values));
    csv.close();

    drawPlot(options.outDir, series);
    return 0;
}
