# Run by CPack before it packs what it has installed: whoever builds, and under whatever umask, directories are open to
# all. (CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS does not help, it is subject to the umask itself.)
execute_process(COMMAND chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_DIRECTORY} COMMAND_ERROR_IS_FATAL ANY)
