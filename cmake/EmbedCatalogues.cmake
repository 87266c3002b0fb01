# cmake -DOUTPUT=FILE "-DCATALOGUES=a/de.mo;a/fr.mo" -P EmbedCatalogues.cmake: writes the C++ source that holds
# them.
set(arrays "")
set(table "")
set(count 0)
foreach(file ${CATALOGUES})
    get_filename_component(code ${file} NAME_WE)
    file(READ ${file} bytes HEX)
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" bytes "${bytes}")
    # Lines of 32 bytes, each a literal of its own: compilers limit the length of one.
    string(LENGTH "${bytes}" length)
    set(lines "")
    foreach(start RANGE 0 ${length} 128)
        string(SUBSTRING "${bytes}" ${start} 128 line)
        if(line)
            string(APPEND lines "\n    \"${line}\"")
        endif()
    endforeach()
    string(APPEND arrays "constexpr char catalogue${count}[] =${lines};\n")
    string(APPEND table "    {\"${code}\", {catalogue${count}, sizeof catalogue${count} - 1}},\n")
    math(EXPR count "${count} + 1")
endforeach()
file(WRITE ${OUTPUT} "// Written by the build from Translations/*.po.
#include \"Engine/Language/EmbeddedCatalogues.h\"

#include <array>

namespace gull {

namespace {

${arrays}
constexpr std::array<EmbeddedCatalogue, ${count}> all{{
${table}}};

}  // namespace

std::span<const EmbeddedCatalogue> embeddedCatalogues() {
    return all;
}

}  // namespace gull
")
