#error "only shown in editors, not compiled"
