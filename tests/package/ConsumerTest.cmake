# Installs the build tree into a private prefix, builds a consumer project against it with
# find_package only, and runs it. Called by CTest with -D arguments:
# BUILD_DIR, CONSUMER_DIR, WORK_DIR, EXTRA_FLAGS and, for a consumer of the test engine,
# TEST_ENGINE_LIBRARY and SOURCE_DIR, from which only the engine's two C headers are copied.
# With STANDALONE_SOURCE_DIR the tree installed is a build of its own with BUILD_TESTING=OFF,
# which proves that the package needs no test code.
function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${ARGN}\n${output}")
    endif()
    message("${output}")
endfunction()

file(REMOVE_RECURSE ${WORK_DIR})
if(STANDALONE_SOURCE_DIR)
    set(BUILD_DIR ${WORK_DIR}/library)
    run(${CMAKE_COMMAND} -S ${STANDALONE_SOURCE_DIR} -B ${BUILD_DIR} -DBUILD_TESTING=OFF)
    # A bare --parallel starts one compiler per file at once and can exhaust the memory.
    cmake_host_system_information(RESULT cores QUERY NUMBER_OF_LOGICAL_CORES)
    run(${CMAKE_COMMAND} --build ${BUILD_DIR} --parallel ${cores})
endif()
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${WORK_DIR}/prefix)
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
