# SPDX-License-Identifier: MIT
cmake_minimum_required(VERSION 3.25)

# Makes the Debian package of a build that stands, and has lintian look at it.

file(REMOVE_RECURSE ${FOLDER})
execute_process(COMMAND ${CPACK} --config ${CONFIG} -B ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
# Nobody has asked Debian for this package, so no such wish can be closed.
file(GLOB package ${FOLDER}/*.deb)
execute_process(COMMAND ${LINTIAN} --allow-root --no-tag-display-limit --fail-on error,warning
    --suppress-tags initial-upload-closes-no-bugs ${package} COMMAND_ERROR_IS_FATAL ANY)
