#include "Engine/Render/ProgramCache.h"
#include "Engine/Render/ProgramList.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <utility>

// All shaders as seen by the reference compiler, glslang, which holds to the language where a driver may not.
namespace gull::test {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// The sources of all programs, each in one file of a folder.
class ShaderFolder {
  public:
    struct Program {
        std::string name;
        std::string vertex, fragment;  ///< names of files
        bool isFirst;                  ///< of its kind
    };

    explicit ShaderFolder(const ShaderDialect& dialect) {
        std::set<ProgramKind> kinds;
        for (const ProgramKey& key : programList()) {
            const ProgramSource source = programSource(key, dialect);
            programs_.push_back({source.name, file(source.vertex, source.name, "vert"),
                                 file(source.fragment, source.name, "frag"), kinds.insert(key.kind).second});
        }
    }

    const std::vector<Program>& programs() const { return programs_; }
    /// In alphabetical order, as `*` gives them.
    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& [text, name] : files_) names.push_back(name);
        std::sort(names.begin(), names.end());
        return names;
    }
    /// The output of glslangValidator when run in the folder. `fails`: whether it found a fault.
    std::string glslang(const std::string& arguments, bool* fails = nullptr) const {
        const std::string command = "cd '" + folder_.path().string() + "' && LC_ALL=C glslangValidator " +
                                    arguments + " >log 2>&1 </dev/null";
        const int status = std::system(command.c_str());
        if (fails) *fails = status != 0;
        return readText(folder_ / "log");
    }

  private:
    std::string file(const std::string& text, std::string program, const char* stage) {
        auto [known, isNew] = files_.try_emplace(text);
        if (isNew) {
            std::replace(program.begin(), program.end(), ' ', '-');
            known->second = std::to_string(10000 + files_.size()) + "-" + program + "." + stage;
            writeText(folder_ / known->second, text);
        }
        return known->second;
    }

    TemporaryFolder folder_;
    std::map<std::string, std::string> files_;
    std::vector<Program> programs_;
};

/// glslang's output without the names of the files that it finds nothing wrong with; the first complaints.
std::string complaintsIn(const std::string& output) {
    constexpr std::size_t enough = 2000;
    std::string complaints, file;
    std::istringstream lines(output);
    for (std::string line; complaints.size() < enough && std::getline(lines, line);) {
        if (line.ends_with(".vert") || line.ends_with(".frag"))
            file = line;
        else if (!line.empty())
            complaints += file + ": " + withFileNames(line) + "\n";
    }
    return complaints;
}

/// The outputs or inputs of a stage, by location: "flat vec3 kSkyX".
using Interface = std::map<int, std::string>;

/// `preprocessed`: a shader without macros; `direction`: "in" or "out".
Interface interfaceOf(const std::string& preprocessed, const std::string& direction) {
    const std::regex declaration(R"(layout\s*\(\s*location\s*=\s*(\d+)\s*\)\s*(flat\s+)?)" + direction +
                                 R"(\s+(\w+)\s+(\w+)\s*(\[[^;]*)?;)");
    Interface result;
    std::istringstream lines(preprocessed);
    std::smatch match;
    for (std::string line; std::getline(lines, line);)
        if (line.find("layout") != std::string::npos && std::regex_search(line, match, declaration))
            result[std::stoi(match[1])] =
                match[2].str() + match[3].str() + " " + match[4].str() + match[5].str();
    return result;
}

/// The inputs of the fragment stage that the vertex stage does not provide in the same form.
std::vector<std::string> mismatches(const Interface& given, const Interface& taken) {
    std::vector<std::string> faults;
    for (const auto& [location, what] : taken) {
        const auto found = given.find(location);
        if (found == given.end())
            faults.push_back(what + " comes from nowhere");
        else if (found->second != what)
            faults.push_back(what + " is " + found->second + " in the vertex stage");
    }
    return faults;
}

void expectEachCompiles(const ShaderFolder& folder) {
    bool fails = true;
    const std::string output = folder.glslang("[0-9]*", &fails);
    EXPECT_THAT(complaintsIn(output), IsEmpty());
    EXPECT_FALSE(fails) << output.substr(0, 1000);
    for (const std::string& file : folder.files())
        if (output.find(file) == std::string::npos) ADD_FAILURE() << file << " was not compiled";
}

/// glslang matches the stages' variables by name and says nothing about one that only one of them has.
void expectInterfacesMeet(const ShaderFolder& folder) {
    const std::string output = folder.glslang("-E [0-9]*");
    std::map<std::string, Interface> interfaces;
    std::size_t start = output.find("#version");
    for (const std::string& file : folder.files()) {
        ASSERT_NE(start, std::string::npos) << file;
        const std::size_t next = output.find("#version", start + 1);
        interfaces[file] = interfaceOf(output.substr(start, next == std::string::npos ? next : next - start),
                                       file.ends_with(".vert") ? "out" : "in");
        start = next;
    }
    std::set<std::string> faults;
    std::size_t taken = 0;
    for (const ShaderFolder::Program& program : folder.programs()) {
        taken += interfaces[program.fragment].size();
        for (const std::string& fault : mismatches(interfaces[program.vertex], interfaces[program.fragment]))
            faults.insert(program.name + ": " + fault);
    }
    EXPECT_THAT(faults, IsEmpty());
    EXPECT_GT(taken, folder.programs().size()) << "interfaces were not found";
}

void expectStagesLink(const ShaderFolder& folder) {
    for (const ShaderFolder::Program& program : folder.programs()) {
        if (!program.isFirst) continue;
        bool fails = true;
        const std::string output = folder.glslang("-l " + program.vertex + " " + program.fragment, &fails);
        EXPECT_FALSE(fails) << program.name << ": " << complaintsIn(output);
    }
}

void expectAllGood(const ShaderFolder& folder) {
    expectEachCompiles(folder);
    expectInterfacesMeet(folder);
    expectStagesLink(folder);
}

TEST(Shaders, everyVariantCompilesForTheNewestOpenGl) {
    expectAllGood(ShaderFolder({.isVersion410 = true, .hasManyVaryings = true}));
}

TEST(Shaders, everyVariantCompilesForTheOldestWithFewVaryings) {
    expectAllGood(ShaderFolder({.isVersion410 = false, .hasManyVaryings = false}));
}

TEST(ShaderInterface, tellsWhatDoesNotMeet) {
    const Interface given = interfaceOf(
        "layout(location = 9)out vec2 st;\nlayout(location = 16)flat out vec3 sky;\n"
        "layout(location = 23) flat out vec4 lamps [ 2];",
        "out");
    ASSERT_THAT(given, SizeIs(3));
    const auto faults = [&](const std::string& fragment) {
        return mismatches(given, interfaceOf(fragment, "in"));
    };
    EXPECT_THAT(faults("layout(location = 9)in vec2 st;\nlayout(location = 23) flat in vec4 lamps [ 2];"),
                IsEmpty());
    for (const char* other : {"layout(location = 9)in vec3 st;", "layout(location = 9)in vec2 at;",
                              "layout(location = 10)in vec2 st;", "layout(location = 16)in vec3 sky;",
                              "layout(location = 23)flat in vec4 lamps[4];"})
        EXPECT_THAT(faults(other), SizeIs(1)) << other;
}

}  // namespace

}  // namespace gull::test
