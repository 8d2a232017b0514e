// tshark's lines for the frames of a file, with the fields that lines of Halvane have too.
#ifndef BENCH_TSHARK_H
#define BENCH_TSHARK_H

#include <cstdlib>
#include <string>
#include <sys/resource.h>
#include <sys/time.h>

namespace bench {

// Each in the order of Halvane's line. What Halvane derives from them is not among them, as tshark
// derives less.
inline constexpr const char* kTsharkFields[] = {
    "frame.number",
    "frame.time_epoch",
    "wlan.fc.type_subtype",
    "wlan.bssid",
    "wlan.ssid",
    "radiotap.channel.freq",
    "radiotap.dbm_antsignal",
    "radiotap.dbm_antnoise",
    "wlan.fixed.beacon",
    "wlan.fixed.capabilities",
    "wlan.supported_rates",
    "wlan.extended_supported_rates",
    "wlan.ds.current_channel",
    "wlan.tim.dtim_count",
    "wlan.tim.dtim_period",
    "wlan.rsn.version",
    "wlan.rsn.gcs.type",
    "wlan.rsn.pcs.type",
    "wlan.rsn.akms.type",
    "wlan.rsn.capabilities.preauth",
    "wlan.rsn.capabilities.no_pairwise",
    "wlan.rsn.capabilities.ptksa_replay_counter",
    "wlan.rsn.capabilities.gtksa_replay_counter",
    "wlan.rsn.capabilities.mfpr",
    "wlan.rsn.capabilities.mfpc",
    "wlan.rsn.capabilities.peerkey",
    "wlan.country_info.code",
    "wlan.country_info.fnm.fcn",
    "wlan.country_info.fnm.nc",
    "wlan.country_info.fnm.mtpl",
    "wlan.ht.capabilities",
    "wlan.ht.capabilities.ldpccoding",
    "wlan.ht.capabilities.width",
    "wlan.ht.capabilities.sm",
    "wlan.ht.capabilities.green",
    "wlan.ht.capabilities.short20",
    "wlan.ht.capabilities.short40",
    "wlan.ht.capabilities.txstbc",
    "wlan.ht.capabilities.rxstbc",
    "wlan.ht.capabilities.delayedblockack",
    "wlan.ht.capabilities.amsdu",
    "wlan.ht.capabilities.dsscck",
    "wlan.ht.capabilities.40mhzintolerant",
    "wlan.ht.capabilities.lsig",
    "wlan.ht.ampduparam",
    "wlan.ht.mcsset",
    "wlan.htex.capabilities",
    "wlan.txbf",
    "wlan.asel",
    "wlan.ht.info.primarychannel",
    "wlan.ht.info.secchanoffset",
    "wlan.ht.info.chanwidth",
    "wlan.ht.info.rifs",
    "wlan.ht.info.ht_protection",
    "wlan.ht.info.greenfield",
    "wlan.ht.info.obssnonht",
    "wlan.ht.info.dualbeacon",
    "wlan.ht.info.dualcts",
    "wlan.ht.info.secondarybeacon",
    "wlan.ht.info.lsigprotsupport",
    "wlan.ht.info.pco.active",
    "wlan.ht.info.pco.phase",
    "wlan.tag.number",
    "wlan.tag.length",
};

// Prints them all as JSON to nowhere. Returns whether tshark could.
inline bool printByTshark(const std::string& path) {
    std::string command = "tshark -n -r '" + path + "' -T json";
    for (const char* const field : kTsharkFields) command.append(" -e ").append(field);
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

// The processor time, in seconds, of all processes that were started and have ended.
inline double secondsOfChildren() {
    rusage usage{};
    ::getrusage(RUSAGE_CHILDREN, &usage);
    const auto secondsOf = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
}

}  // namespace bench

#endif
