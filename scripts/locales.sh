# The locale in which each resource language runs.
locale_of() {
    case $1 in
        2052) echo zh_CN.UTF-8 ;;
        1028) echo zh_TW.UTF-8 ;;
        1033) echo C.UTF-8 ;;
        *) echo "no such language: $1" >&2; return 1 ;;
    esac
}
