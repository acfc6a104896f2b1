# Install rules and package files come here.
