// The table of kernel forms: for every kernel and target, the form its body
// takes (the flow that fixes its bits, and how the target lays that flow
// out: at the flow's own width, packed onto wider vectors, eight lanes, ...).
//
// The table is a committed text file, one line per kernel and target:
//     <kernel name> <target> <field>=<value> ...
// for example
//     kvtgDFTFwd_CToC_12_32fc x86-64-v3 flow=split body=eight batch=no
// The build only reads it; `kvtgen --explore` runs the searches of each
// family on each target, costs the candidates with the target's cost model
// and writes the table anew.  Editing one line changes the form of one
// kernel; a form that cannot be built, or whose body would not give the
// flow's bits, stops the generator with a message naming the kernel.
#ifndef KVTGEN_FORMS_H
#define KVTGEN_FORMS_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace gen {

// The fields of one line, in the order written.
class Form {
public:
    Form& set(const std::string& field, const std::string& value);
    bool has(const std::string& field) const { return find(field) != nullptr; }
    // The value of a field; a missing field stops the generator, naming `kernel`.
    const std::string& get(const std::string& field) const;
    std::string text() const;

    // The kernel whose form this is (for messages).
    std::string kernel;

private:
    const std::string* find(const std::string& field) const;

    std::vector<std::pair<std::string, std::string>> fields_;  // name and value, in the order set
};

// The error that names a kernel whose table entry cannot be built.
[[noreturn]] void formError(const std::string& kernel, const std::string& what);

// The form of a kernel on the current target.  Building, it is read from the
// table (a kernel missing there stops the generator); exploring, `search`
// finds it and the table records it.  A null `search` marks a form chosen
// outside the generator (by timing): exploring keeps its line.
Form formOf(const std::string& kernel, const std::function<Form()>& search);

// The form of a kernel on another target (exploring: the baseline's line,
// already explored, whose flow the other targets take).
const Form& formOn(const std::string& kernel, const std::string& targetName);

// The table the generator runs with, read from a file; exploring (where the
// file may be missing), the searches write it anew.
void loadForms(const std::string& path, bool exploring = false);
// Writes the table: the kernels in the order the families asked for them (the
// others after them), each with its lines by target.
void writeForms(const std::string& path);

}  // namespace gen

#endif
