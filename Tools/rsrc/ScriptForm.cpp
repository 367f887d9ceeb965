#include "Tools/rsrc/Forms.h"

#include <map>
#include <set>
#include <sstream>

namespace Rsrc {

namespace {

struct Step {
    const char* name;
    Int opcode;
    Int arguments;
};
constexpr Int kRepeat = 7;
constexpr Step kSteps[] = {{"nop", 0, 0}, {"wait", 1, 1}, {"by", 2, 3}, {"to", 3, 3}, {"frame", 4, 1}, {"next", 5, 0},
    {"previous", 6, 0}, {"repeat", kRepeat, 2}, {"hide", 8, 0}, {"show", 9, 0}, {"flag", 10, 1}, {"await", 11, 1},
    {"mode", 12, 1}, {"call", 13, 1}, {"proc", 254, 1}, {"end", 255, 0}};

const Step* stepNamed(const std::string& name)
{
    for (const Step& step : kSteps)
        if (name == step.name)
            return &step;
    return nullptr;
}

Int recordLength(const Step& step) { return step.opcode == kRepeat ? 8 : 2 + 2 * step.arguments; }

std::vector<std::string> wordsOf(const Source& source)
{
    std::istringstream in(source.word());
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    if (words.empty())
        source.fail("a step is missing");
    return words;
}

Int argument(const Source& source, const std::string& word)
{
    std::size_t used = 0;
    long value = 0;
    try {
        value = std::stol(word, &used, 0);
    } catch (const std::exception&) {
        used = 0;
    }
    if (used != word.size() || value < -32768 || value > 32767)
        source.fail('"' + word + "\" is no whole number from -32768 to 32767");
    return value;
}

/// Where the labels of a script stand, in bytes from its first record.
std::map<std::string, Int> labelsOf(const std::vector<Source>& steps)
{
    std::map<std::string, Int> labels;
    Int at = 0;
    for (const Source& source : steps) {
        const std::vector<std::string> words = wordsOf(source);
        if (words[0] == "label") {
            if (words.size() != 2 || !labels.emplace(words[1], at).second)
                source.fail("a label is a name of its own");
            continue;
        }
        const Step* step = stepNamed(words[0]);
        if (!step)
            source.fail('"' + words[0] + "\" is no step");
        if (I(words.size()) != step->arguments + 1)
            source.fail('"' + words[0] + "\" takes " + std::to_string(step->arguments) + " arguments");
        at += recordLength(*step);
    }
    return labels;
}

Bytes compileScript(const Source& script)
{
    const std::vector<Source> steps = script.list();
    const std::map<std::string, Int> labels = labelsOf(steps);
    ByteWriter out;
    for (const Source& source : steps) {
        const std::vector<std::string> words = wordsOf(source);
        const Step* step = stepNamed(words[0]);
        if (!step)
            continue; // a label
        out.u8(recordLength(*step));
        out.u8(step->opcode);
        if (step->opcode == kRepeat) {
            if (!labels.count(words[2]))
                source.fail("there is no label \"" + words[2] + '"');
            out.u16(argument(source, words[1]));
            out.u16(0);
            out.u16(labels.at(words[2]));
            continue;
        }
        for (std::size_t i = 1; i < words.size(); ++i)
            out.u16(argument(source, words[i]));
    }
    return out.bytes;
}

Bytes compileScripts(const Source& entry, Int)
{
    entry.allow({"title", "scripts"});
    const std::vector<Source> scripts = entry.at("scripts").numbered(0);
    ByteWriter out;
    out.u16(I(scripts.size()));
    for (const Source& script : scripts) {
        const Bytes records = compileScript(script);
        out.u32(4 + I(records.size()));
        out.raw(records);
    }
    return out.bytes;
}

std::optional<std::string> showScript(const Bytes& records)
{
    const Block block(records);
    std::set<Int> targets;
    for (int pass = 0; pass < 2; ++pass) {
        std::string out;
        for (Int at = 0; at < block.count(); at += block.u8(at)) {
            if (at + 2 > block.count() || block.u8(at) < 2 || at + block.u8(at) > block.count())
                return std::nullopt;
            const Step* step = nullptr;
            for (const Step& s : kSteps)
                if (s.opcode == block.u8(at + 1) && recordLength(s) == block.u8(at))
                    step = &s;
            if (!step)
                return std::nullopt;
            if (targets.count(at))
                out += "\n        - label at" + std::to_string(at);
            out += std::string("\n        - ") + step->name;
            if (step->opcode == kRepeat) {
                targets.insert(block.s16(at + 6));
                out += ' ' + std::to_string(block.s16(at + 2)) + " at" + std::to_string(block.s16(at + 6));
                continue;
            }
            for (Int i = 0; i < step->arguments; ++i)
                out += ' ' + std::to_string(block.s16(at + 2 + 2 * i));
        }
        if (pass == 1)
            return out.empty() ? " []" : out;
    }
    return std::nullopt;
}

std::optional<std::string> showScripts(Int, const Bytes& data)
{
    const auto scripts = scriptsOf(data);
    if (!scripts)
        return std::nullopt;
    std::string out = "\n    scripts:";
    for (std::size_t i = 0; i < scripts->size(); ++i) {
        const auto steps = showScript((*scripts)[i]);
        if (!steps)
            return std::nullopt;
        out += "\n      " + std::to_string(i) + ':' + *steps;
    }
    return out;
}

} // namespace

std::optional<std::vector<Bytes>> scriptsOf(const Bytes& data)
{
    ByteReader in(data, 2);
    std::vector<Bytes> scripts;
    while (!in.atEnd()) {
        const Int length = in.s32();
        if (length < 4 || in.pos + length - 4 > I(data.size()))
            return std::nullopt;
        scripts.push_back(in.raw(length - 4));
    }
    return scripts;
}

std::vector<Form> scriptForms() { return {{"Scpt", compileScripts, showScripts}}; }

} // namespace Rsrc
