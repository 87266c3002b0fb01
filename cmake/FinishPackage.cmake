# Run by cpack on the installed files before it packs them: what Debian wants compressed is compressed, and all times
# are that of the last commit, so that equal sources give an equal package. Refuses where the dependencies cannot be
# computed, which cpack alone would pass over.

execute_process(COMMAND dpkg-shlibdeps --version RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The package would lack its dependencies, because dpkg-shlibdeps cannot be run. "
        "It is in the package dpkg-dev; ./package installs all that packaging needs.")
endif()

if(DEFINED ENV{SOURCE_DATE_EPOCH})
    set(epoch $ENV{SOURCE_DATE_EPOCH})
else()
    execute_process(COMMAND git -C ${CPACK_PROJECT_SOURCE_DIR} log -1 --format=%ct
        OUTPUT_VARIABLE epoch ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT epoch)  # no repository: the date of the release
        execute_process(COMMAND dpkg-parsechangelog -l ${CPACK_PROJECT_SOURCE_DIR}/Packaging/changelog -S Timestamp
            OUTPUT_VARIABLE epoch OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    endif()
    set(ENV{SOURCE_DATE_EPOCH} ${epoch})
endif()

set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})
file(GLOB_RECURSE compressed ${root}/usr/share/man/*.6 ${root}/usr/share/doc/*/changelog)
if(compressed)
    execute_process(COMMAND gzip -9nf ${compressed} COMMAND_ERROR_IS_FATAL ANY)
endif()
execute_process(COMMAND find ${root} -exec touch --no-dereference --date=@${epoch} {} + COMMAND_ERROR_IS_FATAL ANY)
