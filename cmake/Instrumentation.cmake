# Sanitizers and coverage go into every object or into none.
if(ORVEL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()
if(ORVEL_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()
