"""Exchange files as pages for people."""
