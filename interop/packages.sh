# Sourced by ./check --interop: the Debian packages of the agent and of its peers.

interop_packages=(kamailio kamailio-presence-modules kamailio-sqlite-modules liblinphone-dev libsofia-sip-ua-dev
  libxml2-utils linphone-common pkg-config sip-tester sqlite3 tshark)
