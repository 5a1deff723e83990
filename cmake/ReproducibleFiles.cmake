# The same sources make the same files, wherever they lie and whenever they are built.
if(MINGW)
    add_link_options(-Wl,--no-insert-timestamp)
endif()
