#compdef kavit-solve

_arguments -s \
    '--level[only the levels with these numbers]:numbers:' \
    '--title[only levels with such a title]:pattern:' \
    '--list[print the names of the levels and end]' \
    '(--max-positions)--memory[memory for positions]:size, as 4G or 50%:' \
    '(--memory)--max-positions[positions that may be stored]:positions:' \
    '--blocks[most boxes a level may have]:boxes:' \
    '--max-time[seconds for each level]:seconds:' \
    '--opt-level[moves optimizer]:level:((0\:none 1\:something 2\:"something more" 3\:"something plus" 4\:"fewest moves of all"))' \
    '--special[optimize across both sides]' \
    '--search[side to search from]:side:(both forward backward)' \
    '--hash[way to probe the hash table]:case:(default case1 case2 mixed)' \
    '--threads[threads that search]:threads:' \
    '--output[write the levels again with solutions]:file:_files' \
    '--sol[write the solution file]:file or folder:_files' \
    '--expert[full report, and file names that tell the settings]' \
    '--json[print one JSON object a line for each level]' \
    '--dump-levels[write the layers of the search to PREFIX_NAME.txt]:prefix:_files' \
    '--dump-position[add a line on a stored position to NAME_Dist.txt]:position:' \
    '--strict[refuse a level with an invalid character]' \
    '(- *)'{-h,--help}'[print help and end]' \
    '(- *)--version[print the version and end]' \
    '*:level:_files -g "*.(xsb|sok|txt)(-.)"'
