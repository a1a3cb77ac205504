# Installs the built library into a scratch prefix, then configures, builds and runs
# a small consumer project that finds it with find_package(zgraphics).
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix}
    RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "install failed: ${rc}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/install/consumer -B ${WORK_DIR}/build
        -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=Release
    RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "consumer configure failed: ${rc}")
endif()

execute_process(COMMAND ${CMAKE_COMMAND} --build ${WORK_DIR}/build RESULT_VARIABLE rc)
if(rc)
    message(FATAL_ERROR "consumer build failed: ${rc}")
endif()

execute_process(COMMAND ${WORK_DIR}/build/consumer RESULT_VARIABLE rc OUTPUT_VARIABLE out)
message(STATUS "consumer printed: ${out}")
if(rc)
    message(FATAL_ERROR "consumer run failed: ${rc}")
endif()
