/* Exports one name outside the interface: the export check must reject it. */
__attribute__((visibility("default"))) int kvtg_probe_extra(void) { return 1; }
__attribute__((visibility("default"))) int kvtgenGetLibVersion(void) { return 0; }
