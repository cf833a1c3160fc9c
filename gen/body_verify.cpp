// The verifier: a printed body is run as its text reads (body_eval.cpp) on
// the check inputs and held against the flow it was printed from.
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "body_eval.h"
#include "forms.h"
#include "graph_eval.h"

namespace gen {

std::vector<std::vector<double>> verifierInputs(int count, bool single)
{
    const std::size_t n = static_cast<std::size_t>(count);
    std::vector<std::vector<double>> inputs = {std::vector<double>(n, 0.0), std::vector<double>(n, -0.0)};
    for (std::size_t i = 0; i < n; ++i) {
        inputs.push_back(std::vector<double>(n, -0.0));
        inputs.back()[i] = i % 3 == 0 ? -1.5 : 0.75;
    }
    std::vector<double> constant(n, 0.75), alternating(n);
    for (std::size_t i = 0; i < n; ++i)
        alternating[i] = i % 2 ? -0.75 : 0.75;
    inputs.push_back(constant);
    inputs.push_back(alternating);
    unsigned state = 4321u + static_cast<unsigned>(count);
    auto next = [&] {
        state = state * 1664525u + 1013904223u;
        return static_cast<double>(static_cast<int>(state >> 8) - (1 << 23)) / static_cast<double>(1 << (state % 13));
    };
    const double large = single ? 4.0e37 : 2.0e307;
    for (int r = 0; r < 5; ++r) {
        std::vector<double> x(n);
        for (double& value : x) {
            value = next();
            value = r < 3 ? value : value / (1 << 23) * large;
            value = single ? static_cast<double>(static_cast<float>(value)) : value;
        }
        inputs.push_back(x);
    }
    return inputs;
}

void verifyPrintedText(const std::string& kernel, const std::string& text, const std::vector<std::vector<double>>& inputs,
                       const PrintedRun& run, const Reference& expected)
{
    for (const std::vector<double>& x : inputs) {
        const std::map<int, double> stored = runBody(text, x, run.factor, run.single, run.stride);
        for (const auto& [index, value] : expected(x)) {
            const auto found = stored.find(index);
            if (found == stored.end())
                formError(kernel, "its body does not store y[" + std::to_string(index) + "]");
            if (!sameBits(value, found->second))
                formError(kernel, "its body does not give the bits of its flow at y[" + std::to_string(index) +
                                      "] on the generator's check inputs");
        }
    }
}

void verifyPrintedBody(const std::string& kernel, const Graph& graph, const std::vector<int>& outputs,
                       const std::vector<int>& slots, const std::string& text,
                       const std::vector<std::vector<double>>& inputs, double factor, bool single)
{
    verifyPrintedText(kernel, text, inputs, {factor, single, 0}, [&](const std::vector<double>& x) {
        const LaneEvaluator flow(graph, x, factor);
        std::map<int, double> values;
        for (std::size_t i = 0; i < outputs.size(); ++i)
            values[slots[i]] = flow.lanes(outputs[i])[0];
        return values;
    });
}

}  // namespace gen
