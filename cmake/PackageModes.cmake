# SPDX-License-Identifier: MIT
# Folders were made under the umask of whoever packs; in the package they have the modes that Debian wants.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY} DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
