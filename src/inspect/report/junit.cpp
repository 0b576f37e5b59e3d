#include "inspect/report/junit.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <pugixml.hpp>
#include <utility>

#include "inspect/report/xml_text.h"

namespace sealkeeper {
namespace {

using Outcome = JunitCase::Outcome;

class StringWriter : public pugi::xml_writer {
  public:
    void write(const void* data, std::size_t size) override {
        text.append(static_cast<const char*>(data), size);
    }

    std::string text;
};

// Out of memory, pugixml silently leaves nodes out.
void RequireMemory(bool hasSucceeded) {
    if (!hasSucceeded) {
        throw std::bad_alloc();
    }
}

pugi::xml_node AddNode(pugi::xml_node parent, const char* name) {
    const pugi::xml_node node = parent.append_child(name);
    RequireMemory(!node.empty());
    return node;
}

void AddAttribute(pugi::xml_node node, const char* name, const std::string& value) {
    RequireMemory(node.append_attribute(name).set_value(XmlText(value).c_str()));
}

struct Counts {
    std::size_t cases = 0;
    std::size_t failures = 0;
    std::size_t errors = 0;
    std::size_t skipped = 0;
};

Counts CountsOf(const JunitSuite& suite) {
    const auto with = [&suite](Outcome outcome) {
        return static_cast<std::size_t>(
            std::count_if(suite.cases.begin(), suite.cases.end(),
                          [outcome](const JunitCase& test) { return test.outcome == outcome; }));
    };
    return {suite.cases.size(), with(Outcome::Failure), with(Outcome::Error),
            with(Outcome::Skipped)};
}

void AddCounts(pugi::xml_node node, const Counts& counts) {
    AddAttribute(node, "tests", std::to_string(counts.cases));
    AddAttribute(node, "failures", std::to_string(counts.failures));
    AddAttribute(node, "errors", std::to_string(counts.errors));
    AddAttribute(node, "skipped", std::to_string(counts.skipped));
}

const char* ElementOf(Outcome outcome) {
    switch (outcome) {
        case Outcome::Passed:
            break;
        case Outcome::Failure:
            return "failure";
        case Outcome::Error:
            return "error";
        case Outcome::Skipped:
            return "skipped";
    }
    return nullptr;
}

void AddCase(pugi::xml_node suite, const JunitCase& test) {
    const pugi::xml_node node = AddNode(suite, "testcase");
    AddAttribute(node, "classname", test.className);
    AddAttribute(node, "name", test.name);
    const char* const element = ElementOf(test.outcome);
    if (element == nullptr) {
        return;
    }
    const pugi::xml_node outcome = AddNode(node, element);
    if (!test.type.empty()) {
        AddAttribute(outcome, "type", test.type);
    }
    AddAttribute(outcome, "message", test.message);
}

void AddSuite(pugi::xml_node suites, const JunitSuite& suite) {
    const pugi::xml_node node = AddNode(suites, "testsuite");
    AddAttribute(node, "name", suite.name);
    AddCounts(node, CountsOf(suite));
    for (const JunitCase& test : suite.cases) {
        AddCase(node, test);
    }
}

}  // namespace

std::string JunitText(const std::string& name, const std::vector<JunitSuite>& suites) {
    pugi::xml_document document;
    const pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    RequireMemory(!declaration.empty());
    AddAttribute(declaration, "version", "1.0");
    AddAttribute(declaration, "encoding", "UTF-8");
    const pugi::xml_node root = AddNode(document, "testsuites");
    AddAttribute(root, "name", name);
    Counts all;
    for (const JunitSuite& suite : suites) {
        const Counts counts = CountsOf(suite);
        all = {all.cases + counts.cases, all.failures + counts.failures, all.errors + counts.errors,
               all.skipped + counts.skipped};
    }
    AddCounts(root, all);
    for (const JunitSuite& suite : suites) {
        AddSuite(root, suite);
    }
    StringWriter writer;
    document.save(writer, "  ", pugi::format_indent, pugi::encoding_utf8);
    return std::move(writer.text);
}

}  // namespace sealkeeper
