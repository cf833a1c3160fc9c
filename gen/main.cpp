// kvtgen: expands the rule tables into straight-line kernel sources.
//   kvtgen <family> <output directory> [--vector-bits 128|256]
//   kvtgen --list            names the families
#include <cstdio>
#include <exception>
#include <string>

#include "family.h"

int main(int argc, char** argv)
{
    auto& registry = gen::familyRegistry();
    if (argc == 2 && std::string(argv[1]) == "--list") {
        for (const auto& entry : registry)
            std::printf("%s\n", entry.first.c_str());
        return 0;
    }
    gen::Target target;
    if (argc == 5 && std::string(argv[3]) == "--vector-bits" &&
        (std::string(argv[4]) == "128" || std::string(argv[4]) == "256")) {
        target.vectorBits = std::stoi(argv[4]);
        argc = 3;
    }
    if (argc != 3) {
        std::fprintf(stderr, "usage: kvtgen <family> <output directory> [--vector-bits 128|256] | --list\n");
        return 2;
    }
    gen::setTarget(target);
    const auto found = registry.find(argv[1]);
    if (found == registry.end()) {
        std::fprintf(stderr, "kvtgen: unknown family %s\n", argv[1]);
        return 2;
    }
    try {
        found->second(argv[2]);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kvtgen: %s\n", e.what());
        return 1;
    }
    return 0;
}
