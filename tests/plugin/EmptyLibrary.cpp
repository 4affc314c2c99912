// A library without anything of its own, which needs the same other libraries as the plug-in's.
