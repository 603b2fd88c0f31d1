# install rules come here
