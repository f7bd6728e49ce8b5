// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/client_methods.h"

#include <sstream>
#include <vector>

#include "plugins/method_table.h"

namespace wib {

namespace {

constexpr const char* kRegenerate = "cmake --build build --target regenerate_automation";

// Splits `text` into lines of at most `width` characters, at spaces.
std::vector<std::string> Wrap(const std::string& text, std::size_t width) {
    std::vector<std::string> lines;
    std::istringstream words(text);
    std::string word;
    std::string line;
    while (words >> word) {
        if (!line.empty() && line.size() + 1 + word.size() > width) {
            lines.push_back(line);
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    return lines;
}

std::size_t RequiredCount(const MethodSpec& method) {
    std::size_t count = 0;
    while (count < method.args.size() && !method.args[count].optional) {
        ++count;
    }
    return count;
}

const char* CppParameterType(ArgType type) {
    switch (type) {
        case ArgType::Integer:
        case ArgType::Short:
        case ArgType::Channel:
            return "int";
        case ArgType::Flag:
            return "bool";  // sent as msgpack true/false, which the program reads as -1/0
        case ArgType::Number:
            return "double";
        case ArgType::Single:
            return "float";
        case ArgType::Text:
            return "const std::string&";
        case ArgType::Plane:
            return "const Plane&";
        case ArgType::Params:
            return "const std::map<std::string, Value>&";
        case ArgType::Value:
            return "const Value&";
        case ArgType::Integers:
            return "const std::vector<int>&";
    }
    return "";
}

const char* CppResultType(ResultType type) {
    switch (type) {
        case ResultType::Nothing:
            return "void";
        case ResultType::Integer:
            return "int";
        case ResultType::Number:
            return "double";
        case ResultType::Text:
            return "std::string";
        case ResultType::Flag:
            return "bool";
        case ResultType::Plane:
            return "Plane";
        case ResultType::BrushPlane:
            return "std::optional<Plane>";
        case ResultType::Bounds:
            return "std::array<int, 4>";
        case ResultType::Rgb:
            return "std::array<int, 3>";
        case ResultType::Commands:
            return "std::vector<Command>";
        case ResultType::Value:
            return "Value";
        case ResultType::Integers:
            return "std::vector<int>";
        case ResultType::Params:
            return "std::map<std::string, Value>";
    }
    return "";
}

// An argument name that C++ reserves gets a suffix.
std::string CppName(const char* name) {
    const std::string plain = name;
    return plain == "default" ? "defaultValue" : plain;
}

// One overload of `method` taking its first `count` arguments.
void WriteCppOverload(std::ostream& out, const MethodSpec& method, std::size_t count) {
    const std::string result = CppResultType(method.result.type);
    out << "    " << result << " " << method.name << "(";
    std::string names;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string name = CppName(method.args[i].name);
        out << (i > 0 ? ", " : "") << CppParameterType(method.args[i].type) << " " << name;
        names += ", " + name;
    }
    out << ") {\n        " << (result == "void" ? "" : "return ") << "invoke<" << result << ">(\""
        << method.name << "\"" << names << ");\n    }\n";
}

// Text as it may stand inside a """ docstring: a quote is escaped only
// where it could close the string.
std::string DocstringText(const std::string& text) {
    std::string escaped;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool closes = text[i] == '"' && (i + 1 == text.size() || text[i + 1] == '"');
        if (text[i] == '\\' || closes) {
            escaped += '\\';
        }
        escaped += text[i];
    }
    return escaped;
}

// The call and what the method returns of its answer.
std::string PythonReturn(const MethodSpec& method, const std::string& call) {
    switch (method.result.type) {
        case ResultType::Nothing:
            return "        " + call + "\n";
        case ResultType::Flag:
            return "        return " + call + " == -1\n";
        case ResultType::Bounds:
        case ResultType::Rgb:
            return "        return tuple(" + call + ")\n";
        case ResultType::BrushPlane:
            return "        result = " + call +
                   "\n        return None if result == -1 else result\n";
        default:
            return "        return " + call + "\n";
    }
}

void WritePythonMethod(std::ostream& out, const MethodSpec& method) {
    const std::size_t required = RequiredCount(method);
    std::string parameters = "self";
    std::string call = "self.call(\"" + method.name + "\"";
    for (std::size_t i = 0; i < method.args.size(); ++i) {
        const std::string name = method.args[i].name;
        parameters += ", " + name + (i < required ? "" : "=None");
        if (i < required) {
            call += ", " + name;
        }
    }
    if (required < method.args.size()) {
        call += ", *_given(";
        for (std::size_t i = required; i < method.args.size(); ++i) {
            call += (i > required ? ", " : "") + std::string(method.args[i].name);
        }
        call += ")";
    }
    call += ")";
    out << "\n    def " << method.name << "(" << parameters << "):\n";
    const std::vector<std::string> lines = Wrap(DocstringText(method.summary), 88);
    out << "        \"\"\"";
    for (std::size_t i = 0; i < lines.size(); ++i) {
        out << (i > 0 ? "\n        " : "") << lines[i];
    }
    out << "\"\"\"\n" << PythonReturn(method, call);
}

}  // namespace

std::string CppClientMethods() {
    std::ostringstream out;
    out << "// SPDX-License-Identifier: MIT\n"
        << "// Generated by wib_client_methods from the method table in plugins/; do not edit.\n"
        << "// Regenerate with: " << kRegenerate << "\n"
        << "//\n"
        << "// The methods of the automation object; wibbleton_client.h includes this.\n"
        << "// Booleans travel as the program's -1 / 0; a method with optional\n"
        << "// arguments has an overload for each count the program accepts.\n"
        << "// clang-format off\n"
        << "#pragma once\n\n"
        << "namespace wibbleton {\n\n"
        << "class Wibbleton_Class : public Connection {\n"
        << "  public:\n"
        << "    using Connection::Connection;\n";
    std::string family;
    for (const MethodSpec& method : MethodTable()) {
        if (method.family != family) {
            family = method.family;
            out << "\n    // " << family << ".\n";
        }
        out << "\n";
        for (const std::string& line : Wrap(method.summary, 92)) {
            out << "    // " << line << "\n";
        }
        for (std::size_t count = RequiredCount(method); count <= method.args.size(); ++count) {
            WriteCppOverload(out, method, count);
        }
        if (method.result.type == ResultType::Plane && method.args.empty()) {
            out << "    // The same, received straight into `into`, whose memory is reused.\n"
                << "    void " << method.name << "(Plane& into) {\n        invokeInto(into, \""
                << method.name << "\");\n    }\n";
        }
    }
    out << "};\n\n}  // namespace wibbleton\n";
    return out.str();
}

std::string PythonClientMethods() {
    std::ostringstream out;
    out << "# SPDX-License-Identifier: MIT\n"
        << "# Generated by wib_client_methods from the method table in plugins/; do not edit.\n"
        << "# Regenerate with: " << kRegenerate << "\n"
        << "\"\"\"The methods of the automation object, one for every method the program\n"
        << "serves; wibbleton.Wibbleton_Class inherits them. Booleans travel as the\n"
        << "program's -1 / 0; optional arguments left at None are not sent.\"\"\"\n\n\n"
        << "def _given(*optional):\n"
        << "    \"\"\"The optional arguments up to the first one left out.\"\"\"\n"
        << "    given = []\n"
        << "    for value in optional:\n"
        << "        if value is None:\n"
        << "            break\n"
        << "        given.append(value)\n"
        << "    return given\n\n\n"
        << "class WibbletonMethods:\n"
        << "    \"\"\"Every method of the automation object, over the call() of the class\n"
        << "    that inherits them.\"\"\"\n";
    for (const MethodSpec& method : MethodTable()) {
        WritePythonMethod(out, method);
    }
    return out.str();
}

}  // namespace wib
