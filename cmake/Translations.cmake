# Texts in other languages. Translations/CODE.po is compiled by msgfmt and embedded into the program, so that
# neither the program nor its tests look for installed files.
#
#     cmake --build build --target translations      takes new and changed texts of the sources into every .po

find_program(GULL_MSGFMT msgfmt DOC "gettext's compiler of catalogues")
if(NOT GULL_MSGFMT)
    message(FATAL_ERROR "msgfmt was not found: it is in the package gettext (apt-get install gettext)")
endif()

# gull_embed_translations(TARGET): adds the catalogues to the sources of a room.
function(gull_embed_translations target)
    file(GLOB catalogues CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/Translations/*.po)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/Translations)
    file(MAKE_DIRECTORY ${folder})
    set(compiled)
    foreach(po ${catalogues})
        get_filename_component(code ${po} NAME_WE)
        add_custom_command(OUTPUT ${folder}/${code}.mo
            COMMAND ${GULL_MSGFMT} --check --no-hash --endianness=little --output-file=${folder}/${code}.mo ${po}
            DEPENDS ${po} VERBATIM)
        list(APPEND compiled ${folder}/${code}.mo)
    endforeach()
    add_custom_command(OUTPUT ${folder}/EmbeddedCatalogues.cpp
        COMMAND ${CMAKE_COMMAND} "-DOUTPUT=${folder}/EmbeddedCatalogues.cpp" "-DCATALOGUES=${compiled}"
                -P ${PROJECT_SOURCE_DIR}/cmake/EmbedCatalogues.cmake
        DEPENDS ${compiled} ${PROJECT_SOURCE_DIR}/cmake/EmbedCatalogues.cmake VERBATIM)
    target_sources(${target} PRIVATE ${folder}/EmbeddedCatalogues.cpp)
endfunction()

# The same script makes the template that the tests compare the catalogues with.
set(GULL_TEXTS ${CMAKE_CURRENT_LIST_DIR}/texts.sh)
add_custom_target(translations COMMAND ${GULL_TEXTS} update WORKING_DIRECTORY ${PROJECT_SOURCE_DIR} VERBATIM)
