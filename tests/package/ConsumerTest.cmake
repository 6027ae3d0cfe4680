# Installs the build tree into a private prefix, builds a consumer project against it with
# find_package only, and runs it. Called by CTest with -D arguments:
# BUILD_DIR, CONSUMER_DIR, WORK_DIR, EXTRA_FLAGS and, for a consumer of the test engine,
# TEST_ENGINE_LIBRARY and SOURCE_DIR, from which only the engine's two C headers are copied.
# With ONLY_CHECK_INSTALLED_FILES the test builds no consumer: it proves that the package holds
# no test code, since every installed file is one of the package's own and its exported targets
# are the two libraries alone, and that a tree configured from SOURCE_DIR with BUILD_TESTING=OFF
# has no test target to build.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    message("${output}")
endfunction()

function(check_installed_files prefix)
    file(GLOB_RECURSE installed LIST_DIRECTORIES false RELATIVE ${prefix} ${prefix}/*)
    set(package_file "^(bin/tavrin-dl|lib/libTavrin\\.Vision\\.(Core|DeepLearning)\\.so|\
lib/tavrin_dl(\\.cpython-[^/]+\\.so|\\.pyi)|include/Vision/.+\\.h|lib/cmake/TavrinVisionDeepLearning/TavrinVisionDeepLearning[A-Za-z-]*\\.cmake)$")
    list(FILTER installed EXCLUDE REGEX "${package_file}")
    if(installed)
        message(FATAL_ERROR "installed besides the package: ${installed}")
    endif()
    file(READ ${prefix}/lib/cmake/TavrinVisionDeepLearning/TavrinVisionDeepLearningTargets.cmake
         targets)
    string(REGEX MATCHALL "add_library\\([^ ]+" declared "${targets}")
    if(NOT declared STREQUAL "add_library(Tavrin::VisionCore;add_library(Tavrin::VisionDeepLearning")
        message(FATAL_ERROR "exported targets: ${declared}")
    endif()
endfunction()

function(check_configured_without_tests source)
    set(tree ${WORK_DIR}/without-tests)
    run(${CMAKE_COMMAND} -S ${source} -B ${tree} -G "Unix Makefiles" -DBUILD_TESTING=OFF)
    execute_process(COMMAND ${CMAKE_COMMAND} --build ${tree} --target help
                    OUTPUT_VARIABLE targets RESULT_VARIABLE result)
    string(REGEX MATCHALL "\\.\\.\\. (kelo_61|[A-Za-z]+_tests|[A-Za-z]+Bench|replay_[A-Za-z]+)\n"
           test_targets "${targets}")
    if(NOT result EQUAL 0 OR NOT targets MATCHES "\\.\\.\\. Tavrin\\.Vision\\.DeepLearning\n"
       OR test_targets)
        message(FATAL_ERROR "configured with BUILD_TESTING=OFF: ${targets}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
if(ONLY_CHECK_INSTALLED_FILES)
    check_installed_files(${WORK_DIR}/prefix)
    check_configured_without_tests(${SOURCE_DIR})
    return()
endif()
set(engine_args)
if(TEST_ENGINE_LIBRARY)
    set(headers ${WORK_DIR}/engine-headers)
    file(COPY ${SOURCE_DIR}/tests/engine/TestEngineControl.h DESTINATION ${headers})
    file(COPY ${SOURCE_DIR}/engine/EngineRecords.h DESTINATION ${headers}/engine)
    set(engine_args -DTEST_ENGINE_INCLUDE_DIRS=${headers}
                    -DTEST_ENGINE_LIBRARY=${TEST_ENGINE_LIBRARY})
endif()
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build
    -DCMAKE_PREFIX_PATH=${WORK_DIR}/prefix
    "-DCMAKE_CXX_FLAGS=${EXTRA_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${EXTRA_FLAGS}"
    ${engine_args})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
file(GLOB programs ${WORK_DIR}/build/tavrin_*)
foreach(program ${programs})
    run(${program})
endforeach()
