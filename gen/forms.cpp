#include "forms.h"

#include <algorithm>
#include <fstream>
#include <map>
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
        const auto [at, added] = index.emplace(kernel, entries.size());
        if (added)
            entries.push_back({kernel, {}});
        return entries[at->second];
    }
} table;

}  // namespace

void formError(const std::string& kernel, const std::string& what)
{
    throw std::runtime_error(kernel + " on " + target().name + ": " + what);
}

const std::string* Form::find(const std::string& field) const
{
    for (const auto& [name, value] : fields_)
        if (name == field)
            return &value;
    return nullptr;
}

Form& Form::set(const std::string& field, const std::string& value)
{
    if (const std::string* old = find(field))
        *const_cast<std::string*>(old) = value;  // a field of this form, which is not const
    else
        fields_.emplace_back(field, value);
    return *this;
}

const std::string& Form::get(const std::string& field) const
{
    if (const std::string* value = find(field))
        return *value;
    formError(kernel, "the table of forms gives no " + field + " (line: " + text() + ")");
}

std::string Form::text() const
{
    std::string out;
    for (const auto& [name, value] : fields_)
        out += (out.empty() ? "" : " ") + name + "=" + value;
    return out;
}

Form formOf(const std::string& kernel, const std::function<Form()>& search)
{
    Entry& e = table.entry(kernel);
    if (e.visit < 0)
        e.visit = table.visits++;
    if (table.exploring && search) {
        Form& found = e.byTarget[target().name] = search();
        found.kernel = kernel;
        return found;
    }
    const Form& line = formOn(kernel, target().name);
    // the flow fixes the bits: every target runs the same one
    for (const auto& [other, form] : e.byTarget)
        if (form.has("flow") != line.has("flow") || (form.has("flow") && form.get("flow") != line.get("flow")))
            formError(kernel, "its flow differs from the one on " + other + ", and with it the bits");
    return line;
}

const Form& formOn(const std::string& kernel, const std::string& targetName)
{
    Entry& e = table.entry(kernel);
    const auto at = e.byTarget.find(targetName);
    if (at == e.byTarget.end())
        formError(kernel, "the table of forms has no line for it on " + targetName + " (run kvtgen --explore)");
    return at->second;
}

void loadForms(const std::string& path, bool exploring)
{
    table.exploring = exploring;
    std::ifstream in(path);
    if (!in && !exploring)
        throw std::runtime_error("cannot read the table of forms " + path);
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        if (line.empty() || line[0] == '#') {
            if (table.entries.empty())
                table.preamble += line + "\n";
            continue;
        }
        const std::string where = path + ":" + std::to_string(number);
        std::istringstream words(line);
        Form form;
        std::string targetName;
        if (!(words >> form.kernel >> targetName))
            throw std::runtime_error(where + ": a line names a kernel, a target and its fields");
        for (std::string word; words >> word;) {  // name=value
            const std::size_t eq = word.find('=');
            if (eq == std::string::npos || eq == 0 || eq + 1 == word.size())
                throw std::runtime_error(where + ": field '" + word + "' is not name=value");
            form.set(word.substr(0, eq), word.substr(eq + 1));
        }
        if (!table.entry(form.kernel).byTarget.emplace(targetName, form).second)
            throw std::runtime_error(where + ": a second line for " + form.kernel + " on " + targetName);
    }
}

void writeForms(const std::string& path)
{
    std::vector<Entry> entries = table.entries;
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
        return static_cast<unsigned>(a.visit) < static_cast<unsigned>(b.visit);
    });
    std::ostringstream out;
    out << table.preamble;
    for (const Entry& e : entries)
        for (const auto& [targetName, form] : e.byTarget)
            out << e.kernel << " " << targetName << " " << form.text() << "\n";
    writeIfChanged(path, out.str());
}

}  // namespace gen
