# sources are added with target_sources(kitbay_fakes PRIVATE ...)
