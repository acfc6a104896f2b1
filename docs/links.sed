# Links that the reference cannot follow, to other files than its pages and to headings, become text.
s,\]\(((conventions|theory|robustness|performance|platforms|architecture|host-developers|guide|python)\.md)\),]{\1},g
s,(^|[^!])\[([^]]*)\]\([^)]*\),\1\2,g
s,\]\{([a-z-]+\.md)\},](\1),g
