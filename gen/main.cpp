// kvtgen: expands the rule tables into straight-line kernel sources.
//   kvtgen <family> <output directory> --target <description> --forms <table>
//                             writes a family's units for a target (its file
//                             in targets/), each kernel in the form the table
//                             of forms gives it
//   kvtgen --explore <table> <list of targets> [family...]
//                             searches the forms of the families' kernels on
//                             every target of the list and rewrites the table
//   kvtgen --list             names the families
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>
#include <vector>

#include "family.h"
#include "forms.h"

namespace {

// Runs the families on every target into a scratch folder and records the
// form each kernel's search finds.
int explore(const std::string& tablePath, const std::string& targetList, std::vector<std::string> families)
{
    gen::loadForms(tablePath, true);
    if (families.empty())
        families = {"complex", "real", "hartley", "wht"};
    const std::filesystem::path scratch = std::filesystem::temp_directory_path() / "kvtgen-explore";
    std::filesystem::create_directories(scratch);
    for (const gen::Target& target : gen::readTargetList(targetList)) {
        gen::setTarget(target);
        for (const std::string& family : families) {
            const auto found = gen::familyRegistry().find(family);
            if (found == gen::familyRegistry().end()) {
                std::fprintf(stderr, "kvtgen: unknown family %s\n", family.c_str());
                return 2;
            }
            std::fprintf(stderr, "exploring %s on %s\n", family.c_str(), target.name.c_str());
            found->second(scratch.string());
        }
    }
    std::filesystem::remove_all(scratch);
    gen::writeForms(tablePath);
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> args(argv + 1, argv + argc);
    try {
        if (args.size() == 1 && args[0] == "--list") {
            for (const auto& entry : gen::familyRegistry())
                std::printf("%s\n", entry.first.c_str());
            return 0;
        }
        if (args.size() >= 3 && args[0] == "--explore")
            return explore(args[1], args[2], std::vector<std::string>(args.begin() + 3, args.end()));
        if (args.size() != 6 || args[2] != "--target" || args[4] != "--forms") {
            std::fprintf(stderr, "usage: kvtgen <family> <output directory> --target <description> --forms <table>\n"
                                 "       kvtgen --explore <table> <list of targets> [family...]\n"
                                 "       kvtgen --list\n");
            return 2;
        }
        gen::setTarget(gen::readTarget(args[3]));
        const auto found = gen::familyRegistry().find(args[0]);
        if (found == gen::familyRegistry().end()) {
            std::fprintf(stderr, "kvtgen: unknown family %s\n", args[0].c_str());
            return 2;
        }
        gen::loadForms(args[5]);
        found->second(args[1]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kvtgen: %s\n", e.what());
        return 1;
    }
    return 0;
}
