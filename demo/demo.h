// The demo program runs one line per transform family.  Each family's file
// registers a function that prints its line and returns false on a failure.
#ifndef KVTG_DEMO_H
#define KVTG_DEMO_H

#include <functional>
#include <string>
#include <vector>

namespace demo {

struct Entry {
    int order;  // position of the line in the report
    std::string name;
    std::function<bool()> run;
};

std::vector<Entry>& entries();

struct Registration {
    Registration(int order, const std::string& name, std::function<bool()> run)
    {
        entries().push_back({order, name, std::move(run)});
    }
};

}  // namespace demo

#endif
