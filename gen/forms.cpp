#include "forms.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <vector>

#include "family.h"

namespace gen {

namespace {

struct Entry {
    std::string kernel;
    std::map<std::string, Form> byTarget;
    int visit = -1;  // exploring: when a family first asked for it
};

struct Table {
    std::string preamble;  // the comment lines above the first entry
    std::vector<Entry> entries;
    std::unordered_map<std::string, std::size_t> index;
    bool exploring = false;
    int visits = 0;

    Entry& entry(const std::string& kernel)
    {
        const auto found = index.find(kernel);
        if (found != index.end())
            return entries[found->second];
        index[kernel] = entries.size();
        entries.push_back({kernel, {}});
        return entries.back();
    }
};

Table& table()
{
    static Table t;
    return t;
}

}  // namespace

void formError(const std::string& kernel, const std::string& what)
{
    throw std::runtime_error(kernel + " on " + target().name + ": " + what);
}

Form Form::parse(const std::string& fields, const std::string& where)
{
    Form form;
    std::istringstream words(fields);
    std::string word;
    while (words >> word) {
        const std::size_t eq = word.find('=');
        if (eq == std::string::npos || eq == 0 || eq + 1 == word.size())
            throw std::runtime_error(where + ": field '" + word + "' is not name=value");
        form.set(word.substr(0, eq), word.substr(eq + 1));
    }
    return form;
}

Form& Form::set(const std::string& field, const std::string& value)
{
    if (!values_.count(field))
        order_ += (order_.empty() ? "" : " ") + field;
    values_[field] = value;
    return *this;
}

bool Form::has(const std::string& field) const { return values_.count(field) != 0; }

const std::string& Form::get(const std::string& field) const
{
    const auto found = values_.find(field);
    if (found == values_.end())
        formError(kernel, "the table of forms gives no " + field + " (line: " + text() + ")");
    return found->second;
}

std::string Form::text() const
{
    std::string out;
    std::istringstream names(order_);
    std::string name;
    while (names >> name)
        out += (out.empty() ? "" : " ") + name + "=" + values_.at(name);
    return out;
}

Form formOf(const std::string& kernel, const std::function<Form()>& search)
{
    Table& t = table();
    Entry& e = t.entry(kernel);
    if (e.visit < 0)
        e.visit = t.visits++;
    if (t.exploring && search) {
        Form found = search();
        found.kernel = kernel;
        e.byTarget[target().name] = found;
        return found;
    }
    const auto at = e.byTarget.find(target().name);
    if (at == e.byTarget.end())
        formError(kernel, "the table of forms has no line for it (run kvtgen --explore)");
    // the flow fixes the bits: every target runs the same one
    for (const auto& [other, form] : e.byTarget)
        if (form.has("flow") != at->second.has("flow") ||
            (form.has("flow") && form.get("flow") != at->second.get("flow")))
            formError(kernel, "its flow differs from the one on " + other + ", and with it the bits");
    return at->second;
}

const Form& formOn(const std::string& kernel, const std::string& targetName)
{
    Entry& e = table().entry(kernel);
    const auto at = e.byTarget.find(targetName);
    if (at == e.byTarget.end())
        formError(kernel, "the table of forms has no line for it on " + targetName);
    return at->second;
}

void loadForms(const std::string& path)
{
    std::ifstream in(path);
    if (!in)
        throw std::runtime_error("cannot read the table of forms " + path);
    Table& t = table();
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (line.empty() || line[0] == '#') {
            if (t.entries.empty())
                t.preamble += line + "\n";
            continue;
        }
        std::istringstream words(line);
        std::string kernel, targetName, rest;
        words >> kernel >> targetName;
        std::getline(words, rest);
        const std::string where = path + ":" + std::to_string(number);
        if (targetName.empty())
            throw std::runtime_error(where + ": a line names a kernel, a target and its fields");
        Form form = Form::parse(rest, where);
        form.kernel = kernel;
        Entry& e = t.entry(kernel);
        if (!e.byTarget.emplace(targetName, form).second)
            throw std::runtime_error(where + ": a second line for " + kernel + " on " + targetName);
    }
}

void startExploring() { table().exploring = true; }

void writeForms(const std::string& path)
{
    const Table& t = table();
    // in the order the families ask for their kernels
    std::vector<const Entry*> entries;
    for (const Entry& e : t.entries)
        entries.push_back(&e);
    std::stable_sort(entries.begin(), entries.end(), [](const Entry* a, const Entry* b) {
        return static_cast<unsigned>(a->visit) < static_cast<unsigned>(b->visit);
    });
    std::ostringstream out;
    out << t.preamble;
    for (const Entry* e : entries)
        for (const auto& [targetName, form] : e->byTarget)
            out << e->kernel << " " << targetName << " " << form.text() << "\n";
    writeIfChanged(path, out.str());
}

}  // namespace gen
