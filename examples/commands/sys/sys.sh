# Lists the actions of logind whose name contains the text; --do carries one out.

call() {
    exec busctl call org.freedesktop.login1 /org/freedesktop/login1 \
        org.freedesktop.login1.Manager "$@"
}

if [ "$1" = --do ]; then
    case $2 in
    Lock) call LockSession s auto ;;
    Suspend) call Suspend b true ;;
    Restart) call Reboot b true ;;
    "Shut down") call PowerOff b true ;;
    esac
    exit 2
fi

printf '%s\n' Lock Suspend Restart "Shut down" | grep -iF -e "$1" || true
